#include "tasks/entities/TaskRecurrenceCodec.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

const QString dateFormat = QStringLiteral("yyyy-MM-dd");

QString frequencyName(RecurrenceFrequencyEnum frequency)
{
    switch (frequency) {
    case RecurrenceFrequencyEnum::daily:
        return QStringLiteral("daily");
    case RecurrenceFrequencyEnum::weekly:
        return QStringLiteral("weekly");
    case RecurrenceFrequencyEnum::monthly:
        return QStringLiteral("monthly");
    case RecurrenceFrequencyEnum::yearly:
        return QStringLiteral("yearly");
    }
    return {};
}

std::optional<RecurrenceFrequencyEnum> frequencyNamed(const QString& name)
{
    for (const auto frequency : {RecurrenceFrequencyEnum::daily, RecurrenceFrequencyEnum::weekly,
             RecurrenceFrequencyEnum::monthly, RecurrenceFrequencyEnum::yearly}) {
        if (frequencyName(frequency) == name)
            return frequency;
    }
    return std::nullopt;
}

} // namespace

namespace TaskRecurrenceCodec {

QJsonObject toJson(const TaskRecurrenceEntity& rule)
{
    QJsonObject json {
        {QStringLiteral("frequency"), frequencyName(rule.frequency)}, {QStringLiteral("interval"), rule.interval}};
    if (!rule.weekdays.isEmpty()) {
        QJsonArray days;
        for (const int day : rule.weekdays)
            days.append(day);
        json.insert(QStringLiteral("weekdays"), days);
    }
    if (rule.monthDay != 0)
        json.insert(QStringLiteral("monthDay"), rule.monthDay);
    if (rule.weekdayOrdinal != 0) {
        json.insert(QStringLiteral("weekdayOrdinal"), rule.weekdayOrdinal);
        json.insert(QStringLiteral("ordinalWeekday"), rule.ordinalWeekday);
    }
    if (rule.anchor == RecurrenceAnchorEnum::completion)
        json.insert(QStringLiteral("anchor"), QStringLiteral("completion"));
    if (rule.endAfterCount)
        json.insert(QStringLiteral("endAfterCount"), *rule.endAfterCount);
    if (rule.endOnDate)
        json.insert(QStringLiteral("endOnDate"), rule.endOnDate->toString(dateFormat));
    return json;
}

std::optional<TaskRecurrenceEntity> fromJson(const QJsonObject& json)
{
    const std::optional<RecurrenceFrequencyEnum> frequency
        = frequencyNamed(json.value(QStringLiteral("frequency")).toString());
    if (!frequency)
        return std::nullopt;
    TaskRecurrenceEntity rule;
    rule.frequency = *frequency;
    rule.interval = json.value(QStringLiteral("interval")).toInt(1);
    if (rule.interval < 1)
        return std::nullopt;
    for (const QJsonValue& day : json.value(QStringLiteral("weekdays")).toArray()) {
        const int weekday = day.toInt();
        if (weekday < Qt::Monday || weekday > Qt::Sunday)
            return std::nullopt;
        rule.weekdays.append(weekday);
    }
    rule.monthDay = json.value(QStringLiteral("monthDay")).toInt();
    rule.weekdayOrdinal = json.value(QStringLiteral("weekdayOrdinal")).toInt();
    rule.ordinalWeekday = json.value(QStringLiteral("ordinalWeekday")).toInt();
    if (rule.monthDay < -1 || rule.monthDay > 31 || rule.weekdayOrdinal < -1 || rule.weekdayOrdinal > 5
        || (rule.weekdayOrdinal != 0 && (rule.ordinalWeekday < Qt::Monday || rule.ordinalWeekday > Qt::Sunday)))
        return std::nullopt;
    const QString anchor = json.value(QStringLiteral("anchor")).toString(QStringLiteral("dueDate"));
    if (anchor == QStringLiteral("completion"))
        rule.anchor = RecurrenceAnchorEnum::completion;
    else if (anchor != QStringLiteral("dueDate"))
        return std::nullopt;
    if (json.contains(QStringLiteral("endAfterCount")))
        rule.endAfterCount = json.value(QStringLiteral("endAfterCount")).toInt();
    if (json.contains(QStringLiteral("endOnDate"))) {
        const QDate end = QDate::fromString(json.value(QStringLiteral("endOnDate")).toString(), dateFormat);
        if (!end.isValid())
            return std::nullopt;
        rule.endOnDate = end;
    }
    return rule;
}

QString toText(const TaskRecurrenceEntity& rule)
{
    return QString::fromUtf8(QJsonDocument(toJson(rule)).toJson(QJsonDocument::Compact));
}

std::optional<TaskRecurrenceEntity> fromText(const QString& text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isObject())
        return std::nullopt;
    return fromJson(document.object());
}

} // namespace TaskRecurrenceCodec
