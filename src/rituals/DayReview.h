#pragma once

#include "tasks/applications/BitacoraApplication.h"
#include "tasks/entities/DailyTaskEntity.h"
#include "tasks/entities/ProjectEntity.h"
#include "tasks/entities/TaskEntity.h"

#include <QDate>
#include <QStringList>

// The end of the day: what it held, written as a short text the user may edit and then add to
// each project's logbook entry of the day.
namespace DayReview {

// Posted on the notification centre after the summary went into the logbook, with a Written, so
// that a logbook screen already open adds the summary to what it has not saved yet and reads the
// entries again.
inline const QString logbookWritten = QStringLiteral("dayReviewLogbookWritten");

struct Written {
    QDate date;
    QString summary;
    QList<QUuid> projectIds;
};

// The titles of one project's tasks.
struct ProjectTasks {
    QString project;
    QStringList titles;

    friend bool operator==(const ProjectTasks&, const ProjectTasks&) = default;
};

struct Day {
    QDate date;
    QList<DailyTaskEntity> dailyTasks;
    // "09:30 Standup", in the order of the day.
    QStringList meets;
    // The project tasks completed during the day.
    QList<ProjectTasks> completedTasks = {};
};

// tasks grouped by their projects, in the order of projects, each project's in the order of
// tasks; a project without any is left out, and so is a task of a project not among projects.
QList<ProjectTasks> byProject(const QList<TaskEntity>& tasks, const QList<ProjectEntity>& projects);

// The summary in the user's language: the ticked daily tasks, the project tasks completed, the
// meets, what is left.
QString summary(const Day& day);

// existing with summary added at its end. What the user wrote stays exactly as it was; an empty
// entry starts from the logbook's template; a summary already there is not added twice.
QString appended(const QString& existing, const QString& summary, const QString& templateText);

// Adds summary to the project's entry of the day (created when there is none). Reads the stored
// entry right before writing, so text saved meanwhile is kept. data: the stored
// BitacoraEntryEntity.
TaskResultEntity writeToLogbook(const BitacoraApplication& logbook, const QUuid& projectId, const QUuid& userId,
    const QDate& day, const QString& summary, const QString& templateText);

} // namespace DayReview
