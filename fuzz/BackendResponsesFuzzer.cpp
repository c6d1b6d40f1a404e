// Every body the backend can answer with, decoded the way the repositories decode it: one object,
// a list whose items may be bad, and the dates inside. The first byte picks the type; a
// DecodingError is the expected outcome of a bad body, anything else is a finding.
#include "FuzzInput.h"
#include "networking/APIError.h"
#include "networking/APIErrorMessageEnum.h"
#include "wire/JSONCoding.h"
#include "wire/events/EventResponseDTO.h"
#include "wire/login/SupportDTOs.h"
#include "wire/login/UserDTOs.h"
#include "wire/tasks/BitacoraEntryResponseDTO.h"
#include "wire/tasks/DailyTaskResponseDTO.h"
#include "wire/tasks/ProjectResponseDTO.h"
#include "wire/tasks/TaskListResponseDTO.h"
#include "wire/tasks/TaskResponseDTO.h"

namespace {

template <typename T> void decodeBoth(const QByteArray& body)
{
    try {
        JSONCoding::decode<T>(body);
    } catch (const DecodingError&) {
    }
    try {
        JSONCoding::decode<QList<T>>(body);
    } catch (const DecodingError&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray body = fuzzBytes(data + 1, size - 1);
    switch (data[0] % 10) {
    case 0:
        decodeBoth<TaskResponseDTO>(body);
        break;
    case 1:
        decodeBoth<TaskListResponseDTO>(body);
        break;
    case 2:
        decodeBoth<ProjectResponseDTO>(body);
        break;
    case 3:
        decodeBoth<DailyTaskResponseDTO>(body);
        break;
    case 4:
        decodeBoth<BitacoraEntryResponseDTO>(body);
        break;
    case 5:
        decodeBoth<UserResponseDTO>(body);
        break;
    case 6:
        decodeBoth<SupportResponseDTO>(body);
        break;
    case 7:
        decodeBoth<EventResponseDTO>(body);
        break;
    case 8:
        try {
            JSONCoding::decodeDate(QString::fromUtf8(body));
        } catch (const DecodingError&) {
        }
        break;
    default:
        // A refusal's body reaches the error message as text.
        APIErrorMessageEnum::message(APIError::forbidden(QString::fromUtf8(body)), QString());
        break;
    }
    return 0;
}
