// Every request body the server reads: the JSON object with only the fields a resource allows,
// then each field through the decoder a resource reads it with (texts, names, flags, ids, dates,
// numbers). A Refusal is the expected outcome of a bad body, anything else is a finding.
#include "FuzzInput.h"
#include "Wire.h"

#include <QJsonObject>

#include <string>

namespace {

template <typename Decode> void tryDecode(Decode decode)
{
    try {
        decode();
    } catch (const wire::Refusal&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string body(reinterpret_cast<const char*>(data), size);
    QJsonObject object;
    try {
        // Every field any resource takes, so that each decoder below meets every kind of value.
        object = wire::object(body,
            {"prjId", "prjUserId", "prjName", "prjDescription", "prjShowEveryDay", "talId", "talName", "talDescription",
                "talIsDefault", "tasUserId", "tasTitle", "tasIsDone", "tasDate", "tasDueDate", "tasEisenhowerTag",
                "bteDate", "bteContent", "supMessage", "usrFirstName", "usrLastName", "usrEmail", "evtTitle",
                "evtDescription", "evtSchedule", "evtDurationMinutes", "evtHasAlarm", "evtRepeat", "evtCustomRepeat",
                "confirm"});
    } catch (const wire::Refusal&) {
        return 0;
    }
    for (auto field = object.begin(); field != object.end(); ++field) {
        const QByteArray key = field.key().toUtf8();
        const char* name = key.constData();
        tryDecode([&] { wire::text(object, name); });
        tryDecode([&] { wire::name(object, name); });
        tryDecode([&] { wire::flag(object, name); });
        tryDecode([&] { wire::uuidField(object, name); });
        // A date read is written back in the answer.
        tryDecode([&] { wire::dateOut(wire::date(object, name)); });
        tryDecode([&] { wire::optionalDate(object, name); });
        tryDecode([&] { wire::integer(object, name); });
    }
    return 0;
}
