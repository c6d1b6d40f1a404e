#include "screens/schedule/RepeatOption.h"

#include <QStringList>

QString Repeat::label(RepeatOption option)
{
    switch (option) {
    case RepeatOption::never:
        //% "Never"
        return qtTrId("create-event-repeat-option-never");
    case RepeatOption::day:
        //% "Every day"
        return qtTrId("create-event-repeat-option-day");
    case RepeatOption::week:
        //% "Every week"
        return qtTrId("create-event-repeat-option-week");
    case RepeatOption::month:
        //% "Every month"
        return qtTrId("create-event-repeat-option-month");
    }
    return {};
}

MeetRecurrenceFrequency Repeat::frequency(RepeatOption option)
{
    switch (option) {
    case RepeatOption::never:
        return MeetRecurrenceFrequency::none;
    case RepeatOption::day:
        return MeetRecurrenceFrequency::daily;
    case RepeatOption::week:
        return MeetRecurrenceFrequency::weekly;
    case RepeatOption::month:
        return MeetRecurrenceFrequency::monthly;
    }
    return MeetRecurrenceFrequency::none;
}

RepeatOption Repeat::option(MeetRecurrenceFrequency frequency)
{
    switch (frequency) {
    case MeetRecurrenceFrequency::none:
        return RepeatOption::never;
    case MeetRecurrenceFrequency::daily:
        return RepeatOption::day;
    case MeetRecurrenceFrequency::weekly:
        return RepeatOption::week;
    case MeetRecurrenceFrequency::monthly:
        return RepeatOption::month;
    }
    return RepeatOption::never;
}

QString Repeat::weekdayName(int weekday, const QLocale& locale, QLocale::FormatType format)
{
    // Qt counts from Monday = 1 to Sunday = 7.
    return locale.dayName(weekday == 1 ? 7 : weekday - 1, format);
}

std::optional<QString> Repeat::summary(
    MeetRecurrenceFrequency frequency, const QSet<int>& weekdays, const QLocale& locale)
{
    switch (frequency) {
    case MeetRecurrenceFrequency::none:
        return std::nullopt;
    case MeetRecurrenceFrequency::daily:
        //% "Repeats every day"
        return qtTrId("create-event-repeat-all-days");
    case MeetRecurrenceFrequency::monthly:
        //% "Repeats every month"
        return qtTrId("create-event-repeat-monthly");
    case MeetRecurrenceFrequency::weekly:
        break;
    }
    if (weekdays.isEmpty())
        return std::nullopt;
    if (weekdays == QSet<int> {1, 2, 3, 4, 5, 6, 7})
        return qtTrId("create-event-repeat-all-days");
    if (weekdays == QSet<int> {1, 7})
        //% "Repeats on weekends"
        return qtTrId("create-event-repeat-weekend");
    if (weekdays == QSet<int> {2, 3, 4, 5, 6})
        //% "Repeats on weekdays"
        return qtTrId("create-event-repeat-weekdays");

    const bool spanish = locale.language() == QLocale::Spanish;
    QStringList names;
    for (const int weekday : {2, 3, 4, 5, 6, 7, 1}) {
        if (!weekdays.contains(weekday))
            continue;
        QString name = locale.toLower(weekdayName(weekday, locale));
        // "Every Monday" reads "todos los lunes": Spanish wants the plural.
        if (spanish && !name.endsWith(QLatin1Char('s')))
            name += QLatin1Char('s');
        names.append(name);
    }
    QString list = names.takeLast();
    if (!names.isEmpty())
        //% "and"
        list = names.join(QStringLiteral(", ")) + QLatin1Char(' ') + qtTrId("create-event-repeat-list-conjunction")
            + QLatin1Char(' ') + list;
    //% "Repeats every %1"
    return qtTrId("create-event-repeat-every-day-format").arg(list);
}
