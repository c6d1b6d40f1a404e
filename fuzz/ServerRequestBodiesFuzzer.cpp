// Every request body the server reads, through the same strict decoding its resources use. A
// DecodingError is the expected outcome of a bad body; anything else is a finding. What decodes
// is written back the way the app writes it and must read again: the two directions of a shape
// have to agree on everything the server accepts.
#include "FuzzInput.h"
#include "wire/JSONCoding.h"
#include "wire/events/EventRequestDTO.h"
#include "wire/login/SupportDTOs.h"
#include "wire/login/UserDTOs.h"
#include "wire/tasks/CreateBitacoraEntryRequestDTO.h"
#include "wire/tasks/CreateDailyTaskRequestDTO.h"
#include "wire/tasks/CreateProjectRequestDTO.h"
#include "wire/tasks/CreateTaskListRequestDTO.h"
#include "wire/tasks/CreateTaskRequestDTO.h"
#include "wire/tasks/DeleteCompletedTasksRequestDTO.h"
#include "wire/tasks/UpdateBitacoraEntryRequestDTO.h"
#include "wire/tasks/UpdateDailyTaskRequestDTO.h"
#include "wire/tasks/UpdateProjectRequestDTO.h"
#include "wire/tasks/UpdateTaskListRequestDTO.h"
#include "wire/tasks/UpdateTaskRequestDTO.h"

#include <cstdlib>

namespace {

template <typename Shape> void readAndWriteBack(const QByteArray& body)
{
    Shape read;
    try {
        read = JSONCoding::decode<Shape>(body);
    } catch (const DecodingError&) {
        return;
    }
    if constexpr (JSONCoding::HasWriteJson<Shape>) {
        try {
            JSONCoding::decode<Shape>(QByteArray::fromStdString(JSONCoding::encode(read)));
        } catch (const DecodingError&) {
            // Accepted once, refused when written back: the shape's two directions disagree.
            std::abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray body(reinterpret_cast<const char*>(data), qsizetype(size));
    readAndWriteBack<CreateProjectRequestDTO>(body);
    readAndWriteBack<UpdateProjectRequestDTO>(body);
    readAndWriteBack<CreateTaskListRequestDTO>(body);
    readAndWriteBack<UpdateTaskListRequestDTO>(body);
    readAndWriteBack<DeleteCompletedTasksRequestDTO>(body);
    readAndWriteBack<CreateTaskRequestDTO>(body);
    readAndWriteBack<UpdateTaskRequestDTO>(body);
    readAndWriteBack<CreateDailyTaskRequestDTO>(body);
    readAndWriteBack<UpdateDailyTaskRequestDTO>(body);
    readAndWriteBack<CreateBitacoraEntryRequestDTO>(body);
    readAndWriteBack<UpdateBitacoraEntryRequestDTO>(body);
    readAndWriteBack<EventRequestDTO>(body);
    readAndWriteBack<SupportRequestDTO>(body);
    readAndWriteBack<UserProfileRequestDTO>(body);
    return 0;
}
