#include "wire/tasks/TaskRecurrenceDTO.h"

#include "wire/JSONObjectReader.h"

#include <QDate>
#include <QJsonArray>

namespace {

void check(bool valid, const char* what)
{
    if (!valid)
        throw DecodingError(QStringLiteral("\"tasRecurrence\": %1").arg(QLatin1String(what)));
}

bool isWeekday(qint64 day)
{
    return day >= 1 && day <= 7;
}

} // namespace

TaskRecurrenceDTO TaskRecurrenceDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("frequency"), QLatin1String("interval"), QLatin1String("weekdays"),
        QLatin1String("monthDay"), QLatin1String("weekdayOrdinal"), QLatin1String("ordinalWeekday"),
        QLatin1String("anchor"), QLatin1String("endAfterCount"), QLatin1String("endOnDate")});
    TaskRecurrenceDTO rule;
    rule.frequency = reader.string(QLatin1String("frequency"));
    check(QStringList {QStringLiteral("daily"), QStringLiteral("weekly"), QStringLiteral("monthly"),
              QStringLiteral("yearly")}
              .contains(rule.frequency),
        "unknown frequency");
    rule.interval = reader.optionalInteger(QLatin1String("interval")).value_or(1);
    check(rule.interval >= 1 && rule.interval <= 1000, "interval out of range");
    if (reader.contains(QLatin1String("weekdays"))) {
        const QJsonValue days = reader.object().value(QLatin1String("weekdays"));
        check(days.isArray(), "weekdays must be an array");
        for (const QJsonValue& day : days.toArray()) {
            check(day.isDouble() && isWeekday(day.toInteger()), "weekday out of range");
            rule.weekdays.append(day.toInteger());
        }
    }
    rule.monthDay = reader.optionalInteger(QLatin1String("monthDay")).value_or(0);
    check(rule.monthDay >= -1 && rule.monthDay <= 31, "monthDay out of range");
    rule.weekdayOrdinal = reader.optionalInteger(QLatin1String("weekdayOrdinal")).value_or(0);
    rule.ordinalWeekday = reader.optionalInteger(QLatin1String("ordinalWeekday")).value_or(0);
    check(rule.weekdayOrdinal >= -1 && rule.weekdayOrdinal <= 5
            && (rule.weekdayOrdinal == 0 ? rule.ordinalWeekday == 0 : isWeekday(rule.ordinalWeekday)),
        "weekdayOrdinal or ordinalWeekday out of range");
    rule.anchor = reader.optionalString(QLatin1String("anchor")).value_or(QStringLiteral("dueDate"));
    check(rule.anchor == QStringLiteral("dueDate") || rule.anchor == QStringLiteral("completion"), "unknown anchor");
    rule.endAfterCount = reader.optionalInteger(QLatin1String("endAfterCount"));
    check(!rule.endAfterCount || *rule.endAfterCount >= 1, "endAfterCount must be at least 1");
    rule.endOnDate = reader.optionalString(QLatin1String("endOnDate"));
    check(!rule.endOnDate || QDate::fromString(*rule.endOnDate, QStringLiteral("yyyy-MM-dd")).isValid(),
        "endOnDate must be a yyyy-MM-dd day");
    return rule;
}

void TaskRecurrenceDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    if (anchor != QStringLiteral("dueDate"))
        out.key("anchor").string(anchor);
    if (endAfterCount)
        out.key("endAfterCount").integer(*endAfterCount);
    if (endOnDate)
        out.key("endOnDate").string(*endOnDate);
    out.key("frequency").string(frequency);
    out.key("interval").integer(interval);
    if (monthDay != 0)
        out.key("monthDay").integer(monthDay);
    if (weekdayOrdinal != 0) {
        out.key("ordinalWeekday").integer(ordinalWeekday);
        out.key("weekdayOrdinal").integer(weekdayOrdinal);
    }
    if (!weekdays.isEmpty()) {
        out.key("weekdays").beginArray();
        for (const qint64 day : weekdays)
            out.integer(day);
        out.endArray();
    }
    out.endObject();
}
