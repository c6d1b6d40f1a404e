#include "tasks/domain/TaskRecurrence.h"

#include <algorithm>

namespace {

int clampedDay(int year, int month, int day)
{
    const int last = QDate(year, month, 1).daysInMonth();
    return day == -1 ? last : std::min(day, last);
}

// The `ordinal`-th `weekday` of the month (-1: the last); invalid when the month has no fifth.
QDate ordinalWeekdayIn(int year, int month, int ordinal, int weekday)
{
    if (ordinal == -1) {
        QDate day(year, month, QDate(year, month, 1).daysInMonth());
        return day.addDays(-((day.dayOfWeek() - weekday + 7) % 7));
    }
    const QDate first(year, month, 1);
    const QDate day = first.addDays((weekday - first.dayOfWeek() + 7) % 7 + 7 * (ordinal - 1));
    return day.month() == month ? day : QDate();
}

// The rule's day in one month, for monthly and yearly rules.
QDate dayInMonth(const TaskRecurrenceEntity& rule, int year, int month, QDate original)
{
    if (rule.weekdayOrdinal != 0)
        return ordinalWeekdayIn(year, month, rule.weekdayOrdinal, rule.ordinalWeekday);
    return QDate(year, month, clampedDay(year, month, rule.monthDay != 0 ? rule.monthDay : original.day()));
}

QDate nextMonthly(const TaskRecurrenceEntity& rule, QDate after, QDate original, bool yearly)
{
    // Yearly rules stay in the original's month.
    int year = after.year();
    int month = yearly ? original.month() : after.month();
    const int step = yearly ? 12 * rule.interval : rule.interval;
    // A month without the day (a fifth Monday) is passed over; a few years of steps find one.
    for (int attempt = 0; attempt < 12 * 8; ++attempt) {
        const QDate candidate = dayInMonth(rule, year, month, original);
        if (candidate.isValid() && candidate > after)
            return candidate;
        const int next = (month - 1) + step;
        year += next / 12;
        month = next % 12 + 1;
    }
    return {};
}

QDate nextWeekly(const TaskRecurrenceEntity& rule, QDate after, QDate original)
{
    QList<int> days = rule.weekdays;
    if (days.isEmpty())
        days = {original.dayOfWeek()};
    std::sort(days.begin(), days.end());
    for (const int day : days) {
        if (day > after.dayOfWeek())
            return after.addDays(day - after.dayOfWeek());
    }
    const QDate weekStart = after.addDays(1 - after.dayOfWeek());
    return weekStart.addDays(7 * rule.interval + days.constFirst() - 1);
}

} // namespace

namespace TaskRecurrence {

QDate nextDay(const TaskRecurrenceEntity& rule, QDate after, QDate original)
{
    const TaskRecurrenceEntity sane = [&] {
        TaskRecurrenceEntity copy = rule;
        copy.interval = std::max(1, copy.interval);
        return copy;
    }();
    switch (sane.frequency) {
    case RecurrenceFrequencyEnum::daily:
        return after.addDays(sane.interval);
    case RecurrenceFrequencyEnum::weekly:
        return nextWeekly(sane, after, original);
    case RecurrenceFrequencyEnum::monthly:
        return nextMonthly(sane, after, original, false);
    case RecurrenceFrequencyEnum::yearly:
        return nextMonthly(sane, after, original, true);
    }
    return {};
}

std::optional<TaskEntity> nextOccurrence(const TaskEntity& task, const QDateTime& finishedAt)
{
    if (!task.tasRecurrence)
        return std::nullopt;
    const TaskRecurrenceEntity& rule = *task.tasRecurrence;
    const QDate finishedDay = finishedAt.toLocalTime().date();
    const QDate dueDay = task.dueDay().value_or(finishedDay);
    const QDate after = rule.anchor == RecurrenceAnchorEnum::completion ? finishedDay : dueDay;
    // Counted from the completion, a rule without weekdays or a day of the month keeps the
    // interval from that day; counted from the due date it keeps the due date's shape.
    const QDate original = rule.anchor == RecurrenceAnchorEnum::completion ? finishedDay : dueDay;
    const QDate day = nextDay(rule, after, original);
    if (!day.isValid())
        return std::nullopt;
    if (rule.endOnDate && day > *rule.endOnDate)
        return std::nullopt;
    if (rule.endAfterCount && task.tasOccurrence + 1 > *rule.endAfterCount)
        return std::nullopt;

    TaskEntity next = task;
    next.tasId = QUuid::createUuid();
    next.tasIsDone = false;
    next.tasCompletedAt.reset();
    next.tasOccurrence = task.tasOccurrence + 1;
    // A day of the month shortened by a short month (the 31st in April) returns in the longer
    // ones: the series keeps the day it started on.
    if (rule.anchor == RecurrenceAnchorEnum::dueDate
        && (rule.frequency == RecurrenceFrequencyEnum::monthly || rule.frequency == RecurrenceFrequencyEnum::yearly)
        && rule.monthDay == 0 && rule.weekdayOrdinal == 0)
        next.tasRecurrence->monthDay = original.day();
    if (task.tasDueDate && task.tasDueHasTime) {
        // The same wall-clock time on the new day, whatever the offset then is.
        next.tasDueDate = QDateTime(day, task.tasDueDate->toLocalTime().time()).toUTC();
    } else {
        next.tasDueDate = TaskEntity::dueOnDay(day);
        next.tasDueHasTime = false;
    }
    return next;
}

} // namespace TaskRecurrence
