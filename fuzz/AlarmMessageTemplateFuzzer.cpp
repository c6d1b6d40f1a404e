// The alarm sentence is typed by the user and the meet's name comes from any calendar: both are
// split from the input at the first zero byte.
#include "FuzzInput.h"
#include "meetings/templates/AlarmMessageDomain.h"
#include "meetings/templates/AlarmMessageDomainError.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = fuzzBytes(data, size);
    const qsizetype split = bytes.indexOf('\0');
    const QString templateText = QString::fromUtf8(split < 0 ? bytes : bytes.left(split));
    const QString name = split < 0 ? QString() : QString::fromUtf8(bytes.mid(split + 1));
    try {
        AlarmMessageDomain::validate(templateText);
    } catch (const AlarmMessageDomainError&) {
    }
    AlarmMessageDomain::render(templateText, name);
    return 0;
}
