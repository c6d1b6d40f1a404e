#pragma once

#include "login/UserEntity.h"
#include "meetings/entities/MeetEntity.h"
#include "tasks/TasksApplicationFactory.h"

#include <QDate>
#include <QObject>
#include <QUuid>

#include <functional>
#include <optional>

class AppServices;

// What the morning plan and the evening review show of one day, read in one go off the GUI
// thread.
struct RitualDay {
    QDate date;
    QUuid userId;
    std::optional<TasksApplicationFactory::Applications> applications;
    // Why there is nothing to show (no account, a store that cannot be read); empty otherwise.
    QString failure;
    QList<DailyTaskEntity> dailyTasks;
    // Unfinished items of earlier days; read for the morning plan only.
    QList<DailyTaskEntity> earlierUnfinished;
    QList<MeetEntity> meets;
    // Why the meets could not be read; the rest is still shown.
    QString meetsFailure;
    // The projects the schedule unfolds on this day.
    QList<ProjectEntity> projects;
    // Every project of the user, in its order, for naming the tasks' projects.
    QList<ProjectEntity> allProjects;
    // Open tasks due on this day or earlier, soonest first.
    QList<TaskEntity> dueTasks;
    // Tasks marked done during this day, in the order they were done.
    QList<TaskEntity> completedTasks;

    std::optional<UserEntity> user;

    // Everything but the meets. Blocking.
    static RitualDay read(const AppServices& services, const QDate& date, bool withEarlier);
    // Reads the day's meets into day.meets, or why not into day.meetsFailure: from the calendar
    // store (touched first on the GUI thread, where this is called) and the backend, off the GUI
    // thread; done runs on context's thread.
    static void readMeets(const AppServices& services, const RitualDay& day, QObject* context,
        std::function<void(const RitualDay&)> done);

    // read() off the GUI thread, then readMeets(); done runs on context's thread.
    static void load(const AppServices& services, const QDate& date, bool withEarlier, QObject* context,
        std::function<void(const RitualDay&)> done);

    // Every project on a working day; on a weekend only those meant for every day.
    static QList<ProjectEntity> shownOn(const QList<ProjectEntity>& projects, const QDate& date);
    // "09:30 Standup"; all-day meets without a time.
    static QString meetLine(const MeetEntity& meet);
};
