#pragma once

#include "tasks/entities/EisenhowerTagEnum.h"
#include "tasks/entities/TaskRecurrenceEntity.h"

#include <QDateTime>
#include <QString>
#include <QUuid>

#include <optional>

struct TaskEntity {
    QUuid tasId = QUuid::createUuid();
    // The project of its list, kept on the task so a project's tasks are found directly.
    QUuid prjId;
    QUuid talId;
    QString tasTitle;
    bool tasIsDone = false;
    // A timed due date is an instant. A due day without a time is kept as midnight UTC of that
    // day, so that it stays the same calendar day wherever the user travels: read it with dueDay().
    std::optional<QDateTime> tasDueDate;
    std::optional<EisenhowerTagEnum> tasEisenhowerTag;
    bool tasDueHasTime = false;
    std::optional<TaskRecurrenceEntity> tasRecurrence;
    // Which occurrence of its rule this task is (1 for the first); counts towards endAfterCount.
    int tasOccurrence = 1;
    // A reminder this many minutes before the due time (0 = at the due time).
    std::optional<int> tasReminderMinutesBefore;
    // When the task was last marked done; empty while it is open.
    std::optional<QDateTime> tasCompletedAt;

    // The calendar day the task is due, in the user's local zone for a timed due date.
    std::optional<QDate> dueDay() const
    {
        if (!tasDueDate)
            return std::nullopt;
        return tasDueHasTime ? tasDueDate->toLocalTime().date() : tasDueDate->toUTC().date();
    }
    static QDateTime dueOnDay(QDate day) { return QDateTime(day, QTime(0, 0), Qt::UTC); }

    friend bool operator==(const TaskEntity&, const TaskEntity&) = default;
};
