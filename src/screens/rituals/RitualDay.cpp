#include "screens/rituals/RitualDay.h"

#include "rituals/RollOver.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"
#include "screens/schedule/DailyEventsController.h"

#include <QLocale>

void RitualDay::readMeets(
    const AppServices& services, const RitualDay& day, QObject* context, std::function<void(const RitualDay&)> done)
{
    if (!day.user) {
        done(day);
        return;
    }
    auto controller = std::make_shared<const DailyEventsController>(services, day.user);
    runAsync(
        context,
        [controller, day] {
            RitualDay read = day;
            try {
                read.meets = controller->loadDay(day.date).meets;
            } catch (const std::exception& error) {
                read.meetsFailure = QString::fromUtf8(error.what());
            }
            return read;
        },
        std::move(done));
}

void RitualDay::load(const AppServices& services, const QDate& date, bool withEarlier, QObject* context,
    std::function<void(const RitualDay&)> done)
{
    const AppServices* shared = &services;
    runAsync(
        context, [shared, date, withEarlier] { return read(*shared, date, withEarlier); },
        [shared, context, done = std::move(done)](const RitualDay& day) { readMeets(*shared, day, context, done); });
}

RitualDay RitualDay::read(const AppServices& services, const QDate& date, bool withEarlier)
{
    RitualDay day;
    day.date = date;
    const AppServices::TasksSession session = services.tasksSession();
    if (!session.user || !session.applications.result) {
        //% "Sign in or create a local account to plan your days."
        day.failure
            = session.user ? session.applications.firstMessage().value_or(QString()) : qtTrId("rituals-no-account");
        return day;
    }
    day.user = session.user;
    day.userId = QUuid::fromString(session.user->usrId);
    day.applications = *session.applications.dataAs<TasksApplicationFactory::Applications>();

    const TaskResultEntity listed = day.applications->dailyTasks.list(RollOver::dateOf(date));
    if (!listed.result) {
        day.failure = listed.firstMessage().value_or(QString());
        return day;
    }
    day.dailyTasks = *listed.dataAs<QList<DailyTaskEntity>>();
    if (withEarlier) {
        const TaskResultEntity earlier = RollOver::unfinishedBefore(day.applications->dailyTasks, date);
        if (!earlier.result) {
            day.failure = earlier.firstMessage().value_or(QString());
            return day;
        }
        day.earlierUnfinished = *earlier.dataAs<QList<DailyTaskEntity>>();
    }
    const TaskResultEntity projects = day.applications->projects.list(day.userId);
    if (projects.result) {
        day.allProjects = *projects.dataAs<QList<ProjectEntity>>();
        day.projects = shownOn(day.allProjects, date);
    }
    // The plan looks ahead to what is due, the review back at what got done.
    const TaskResultEntity tasks = withEarlier ? day.applications->agenda.dueUpTo(day.userId, date)
                                               : day.applications->agenda.completedOn(day.userId, date);
    if (!tasks.result) {
        day.failure = tasks.firstMessage().value_or(QString());
        return day;
    }
    (withEarlier ? day.dueTasks : day.completedTasks) = *tasks.dataAs<QList<TaskEntity>>();
    return day;
}

QList<ProjectEntity> RitualDay::shownOn(const QList<ProjectEntity>& projects, const QDate& date)
{
    const bool weekend = date.dayOfWeek() >= Qt::Saturday;
    QList<ProjectEntity> shown;
    for (const ProjectEntity& project : projects) {
        if (!weekend || project.prjShowEveryDay)
            shown.append(project);
    }
    return shown;
}

QString RitualDay::meetLine(const MeetEntity& meet)
{
    if (meet.metIsAllDay)
        return meet.metName;
    return QLocale().toString(meet.metDate.toLocalTime().time(), QLocale::ShortFormat) + QLatin1Char(' ')
        + meet.metName;
}
