#include "UndoTestSupport.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "screens/schedule/DailyEventsController.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"
#include "undo/UndoHistory.h"

#include <QTranslator>
#include <QUndoStack>

#include <algorithm>

using namespace UndoTestSupport;

// Undo and redo for a Google account: the data lives on the real server (over a throwaway
// PostgreSQL), and what a delete took away comes back under the same identifiers.
class UndoGoogleModeTest : public QObject {
    Q_OBJECT

    std::unique_ptr<GoogleAccountFixture> google;
    QTranslator english;

    TasksApplicationFactory::Applications applications()
    {
        const TaskResultEntity made = google->app().services().tasksApplications(true);
        if (!made.result)
            qFatal("no applications: %s", qPrintable(made.firstMessage().value_or(QString())));
        return *made.dataAs<TasksApplicationFactory::Applications>();
    }
    UndoHistory& history() { return google->app().services().undoHistory(); }

    static QList<TaskEntity> byId(QList<TaskEntity> tasks)
    {
        std::sort(
            tasks.begin(), tasks.end(), [](const TaskEntity& a, const TaskEntity& b) { return a.tasId < b.tasId; });
        return tasks;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
        google = std::make_unique<GoogleAccountFixture>();
        QVERIFY(google->signIn().result);
    }
    void cleanupTestCase() { google.reset(); }

    void shouldBringBackADeletedListAndItsTasksUnderTheirIds()
    {
        const auto apps = applications();
        const QUuid user = google->backendUser();
        const ProjectEntity trip {.prjUserId = user, .prjName = QStringLiteral("Trip")};
        const TaskListEntity packing {.prjId = trip.prjId, .talName = QStringLiteral("Packing"), .talIsDefault = true};
        QVERIFY(apps.projects.create(trip).result);
        QVERIFY(apps.taskLists.create(packing).result);
        QList<QUuid> ids;
        for (const QString& title :
            {QStringLiteral("Passport"), QStringLiteral("Tickets"), QStringLiteral("Charger")}) {
            const TaskEntity task {.prjId = trip.prjId, .talId = packing.talId, .tasTitle = title};
            QVERIFY(apps.tasks.create(task).result);
            ids.append(task.tasId);
        }
        QVERIFY(apps.tasks.markDone(ids.at(1)).result);
        QVERIFY(apps.tasks.setTag(ids.at(2), EisenhowerTagEnum::planning).result);
        QVERIFY(waitForText(history(), QStringLiteral("change quadrant of task 'Charger'")));

        // The client's identifiers are the server's.
        const auto list = found<TaskListEntity>(apps.taskLists.find(packing.talId));
        QVERIFY(list);
        const QList<TaskEntity> tasks = byId(listed<TaskEntity>(apps.tasks.list(packing.talId)));
        QCOMPARE(tasks.size(), 3);
        QVERIFY(ids.contains(tasks.at(0).tasId) && ids.contains(tasks.at(1).tasId) && ids.contains(tasks.at(2).tasId));

        QVERIFY(apps.taskLists.delete_(packing.talId).result);
        QVERIFY(waitForText(history(), QStringLiteral("delete list 'Packing'")));
        QVERIFY(!apps.taskLists.find(packing.talId).result);
        // Brought back in a later second than the one it was completed in (the server keeps whole
        // seconds), so that a completion stamped anew would show.
        const auto tickets = std::find_if(
            tasks.cbegin(), tasks.cend(), [&](const TaskEntity& task) { return task.tasId == ids.at(1); });
        QVERIFY(tickets->tasIsDone && tickets->tasCompletedAt);
        const qint64 completedAt = tickets->tasCompletedAt->toSecsSinceEpoch();
        QTRY_VERIFY(QDateTime::currentSecsSinceEpoch() > completedAt);

        QCOMPARE(step(history(), true), QString());
        QCOMPARE(found<TaskListEntity>(apps.taskLists.find(packing.talId)), list);
        QCOMPARE(byId(listed<TaskEntity>(apps.tasks.list(packing.talId))), tasks);

        QCOMPARE(step(history(), false), QString());
        QVERIFY(!apps.taskLists.find(packing.talId).result);
        QVERIFY(listed<TaskEntity>(apps.tasks.list(packing.talId)).isEmpty());
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(byId(listed<TaskEntity>(apps.tasks.list(packing.talId))), tasks);
    }

    void shouldUndoDailyTasksAndTheLogbookOnTheServer()
    {
        const auto apps = applications();
        const QUuid user = google->backendUser();
        const DailyTaskEntity stretch {
            .dtaUserId = user, .dtaDate = QDateTime::currentDateTimeUtc(), .dtaTitle = QStringLiteral("Stretch")};
        QVERIFY(apps.dailyTasks.create(stretch).result);
        QVERIFY(apps.dailyTasks.setDone(stretch.dtaId, true).result);
        const auto done = found<DailyTaskEntity>(apps.dailyTasks.find(stretch.dtaId));
        QVERIFY(done && done->dtaIsDone);
        QVERIFY(apps.dailyTasks.delete_(stretch.dtaId).result);
        QVERIFY(waitForText(history(), QStringLiteral("delete daily task 'Stretch'")));
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(found<DailyTaskEntity>(apps.dailyTasks.find(stretch.dtaId)), done);
        QCOMPARE(step(history(), true), QString());
        QVERIFY(!found<DailyTaskEntity>(apps.dailyTasks.find(stretch.dtaId))->dtaIsDone);

        const ProjectEntity garden {.prjUserId = user, .prjName = QStringLiteral("Garden")};
        QVERIFY(apps.projects.create(garden).result);
        const TaskResultEntity written
            = apps.bitacora.saveText(garden.prjId, QDateTime::currentDateTimeUtc(), QStringLiteral("Sowed"), user);
        QVERIFY(written.result);
        const BitacoraEntryEntity entry = *written.dataAs<BitacoraEntryEntity>();
        QVERIFY(apps.bitacora.delete_(entry.bteId, user).result);
        QVERIFY(waitForText(history(), QStringLiteral("delete logbook entry 'Sowed'")));
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(found<BitacoraEntryEntity>(apps.bitacora.find(entry.bteId)), entry);
    }

    void shouldRefuseAnIdentifierAlreadyInUse()
    {
        const auto apps = applications();
        const ProjectEntity home {.prjUserId = google->backendUser(), .prjName = QStringLiteral("Home")};
        QVERIFY(apps.projects.create(home).result);
        ProjectEntity again = home;
        again.prjName = QStringLiteral("Another home");
        QVERIFY(!apps.projects.create(again).result);
        QCOMPARE(found<ProjectEntity>(apps.projects.projectRepository->find(home.prjId))->prjName, u"Home");
    }

    // An event kept by the server: each change is one step with the calendar store's texts, undone
    // and redone under the event's own identifier; one changed by another client is left alone.
    void shouldUndoAndRedoEachChangeToABackendEvent()
    {
        const std::optional<UserEntity> user = google->app().services().tasksSession().user;
        QVERIFY(user && user->usrIsGoogleAccount);
        const DailyEventsController schedule(google->app().services(), user);
        RemoteEventRepositoryImpl server(*google->app().services().apiClient());
        // Far from today, at hours no time zone moves to another day.
        const QDate day(2026, 3, 2);
        MeetDraft draft {QStringLiteral("Review"), QStringLiteral("Room 4"), QDateTime(day, QTime(10, 0)),
            QDateTime(day, QTime(11, 0))};
        draft.calendarIdentifier = RemoteEventRepositoryImpl::calendarIdentifier;
        const MeetEntity made = schedule.create(draft);
        QCOMPARE(made.metSource, MeetSource::backend);
        const QString id = made.metOriginalIdentifier;
        QVERIFY(waitForText(history(), QStringLiteral("add event 'Review'")));
        const auto added = server.event(id);
        QVERIFY(added);

        draft.title = QStringLiteral("Design review");
        draft.description = QStringLiteral("Room 5");
        draft.recurrence = MeetRecurrenceFrequency::weekly;
        draft.weekdays = {2, 4};
        const MeetEntity edited = schedule.update(made, draft);
        QVERIFY(waitForText(history(), QStringLiteral("edit event 'Design review'")));
        const auto afterEdit = server.event(id);
        QCOMPARE(afterEdit->evtCustomRepeat, u"mon|wed");

        draft.start = QDateTime(day.addDays(1), QTime(14, 0));
        draft.end = QDateTime(day.addDays(1), QTime(15, 30));
        const MeetEntity moved = schedule.update(edited, draft, TaskChangeVerbEnum::move);
        QVERIFY(waitForText(history(), QStringLiteral("move event 'Design review'")));
        const auto afterMove = server.event(id);
        QCOMPARE(afterMove->evtDurationMinutes, 90);

        schedule.remove(moved);
        QVERIFY(waitForText(history(), QStringLiteral("delete event 'Design review'")));
        QVERIFY(!server.event(id));

        // Back through every state, then forward again.
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(server.event(id), afterMove);
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(server.event(id), afterEdit);
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(server.event(id), added);
        QCOMPARE(step(history(), true), QString());
        QVERIFY(!server.event(id));
        QCOMPARE(step(history(), false), QString());
        QCOMPARE(server.event(id), added);
        QCOMPARE(step(history(), false), QString());
        QCOMPARE(step(history(), false), QString());
        QCOMPARE(server.event(id), afterMove);
        // The schedule reads the event back under the same meet.
        QList<MeetEntity> shown = schedule.loadDay(day.addDays(1)).meets;
        QCOMPARE(shown.size(), 1);
        QCOMPARE(shown.constFirst().metId, made.metId);
        QCOMPARE(shown.constFirst().metName, u"Design review");

        // Another client renames it: neither the move's undo nor the delete's redo applies.
        MeetDraft renamed = draft;
        renamed.title = QStringLiteral("Renamed elsewhere");
        RemoteEventRepositoryImpl(*google->app().services().apiClient()).updateMeet(moved, renamed);
        const auto elsewhere = server.event(id);
        const int place = history().stack()->index();
        QCOMPARE(step(history(), false),
            u"Can't redo delete event 'Design review': it was changed elsewhere since. Nothing was changed.");
        QCOMPARE(step(history(), true),
            u"Can't undo move event 'Design review': it was changed elsewhere since. Nothing was changed.");
        QCOMPARE(server.event(id), elsewhere);
        QCOMPARE(history().stack()->index(), place);

        // Deleted elsewhere: the undo has nothing to put back either.
        RemoteEventRepositoryImpl(*google->app().services().apiClient()).deleteMeet(moved);
        QVERIFY(step(history(), true).startsWith(u"Can't undo move event"));
        QVERIFY(!server.event(id));
        QCOMPARE(history().stack()->index(), place);
    }

    // A weekly backend event is on its days of two weeks and no others, each day's occurrence a
    // meet of its own for the same event. Changed from a later occurrence, the whole event moves
    // by as much; deleted from one, it goes; each undo brings back the event as it was.
    void shouldUndoChangesMadeFromAnOccurrenceOfARepeatingBackendEvent()
    {
        const std::optional<UserEntity> user = google->app().services().tasksSession().user;
        const DailyEventsController schedule(google->app().services(), user);
        RemoteEventRepositoryImpl server(*google->app().services().apiClient());
        const QDate monday(2026, 3, 9);
        MeetDraft draft {
            QStringLiteral("Standup"), {}, QDateTime(monday, QTime(9, 0)), QDateTime(monday, QTime(9, 30))};
        draft.calendarIdentifier = RemoteEventRepositoryImpl::calendarIdentifier;
        draft.recurrence = MeetRecurrenceFrequency::weekly;
        draft.weekdays = {2, 4};
        const MeetEntity made = schedule.create(draft);
        const QString id = made.metOriginalIdentifier;
        QVERIFY(waitForText(history(), QStringLiteral("add event 'Standup'")));
        const auto created = server.event(id);

        const auto occurrences = [&](const QString& title) {
            QList<MeetEntity> found;
            for (const DailyEventsDay& day : schedule.loadDays(monday.addDays(-1), monday.addDays(13))) {
                for (const MeetEntity& meet : day.meets) {
                    if (meet.metName == title)
                        found.append(meet);
                }
            }
            return found;
        };
        const QList<MeetEntity> shown = occurrences(QStringLiteral("Standup"));
        QList<QDateTime> starts;
        QSet<QUuid> ids;
        for (const MeetEntity& meet : shown) {
            starts.append(meet.metDate);
            ids.insert(meet.metId);
            QCOMPARE(meet.metOriginalIdentifier, id);
            QCOMPARE(meet.metDuration, 1800.0);
        }
        QCOMPARE(starts,
            (QList<QDateTime> {draft.start, draft.start.addDays(2), draft.start.addDays(7), draft.start.addDays(9)}));
        QCOMPARE(ids.size(), 4);
        QCOMPARE(shown.constFirst().metId, made.metId);
        // A day read on its own gives the same occurrence.
        const QList<MeetEntity> secondWednesday = schedule.loadDay(monday.addDays(9)).meets;
        QVERIFY(secondWednesday.contains(shown.at(3)));

        // An hour later and renamed, from the second Wednesday.
        MeetDraft later = draft;
        later.title = QStringLiteral("Team standup");
        later.start = shown.at(3).metDate.addSecs(3600);
        later.end = shown.at(3).endDate().addSecs(3600);
        const MeetEntity changed = schedule.update(shown.at(3), later);
        QCOMPARE(changed.metDate, later.start);
        QVERIFY(waitForText(history(), QStringLiteral("edit event 'Team standup'")));
        QCOMPARE(server.event(id)->evtSchedule, draft.start.addSecs(3600));
        QCOMPARE(server.event(id)->evtDurationMinutes, 30);
        QCOMPARE(occurrences(QStringLiteral("Team standup")).size(), 4);
        QCOMPARE(occurrences(QStringLiteral("Team standup")).constFirst().metDate, draft.start.addSecs(3600));

        // Made single from an occurrence, the event is that occurrence alone.
        const MeetEntity third = occurrences(QStringLiteral("Team standup")).at(2);
        MeetDraft once = later;
        once.start = third.metDate;
        once.end = third.endDate();
        once.recurrence = MeetRecurrenceFrequency::none;
        once.weekdays.clear();
        const int recorded = history().stack()->index();
        schedule.update(third, once);
        QTRY_COMPARE_WITH_TIMEOUT(history().stack()->index(), recorded + 1, 15000);
        QCOMPARE(server.event(id)->evtSchedule, draft.start.addDays(7).addSecs(3600));
        QCOMPARE(occurrences(QStringLiteral("Team standup")).size(), 1);

        QCOMPARE(step(history(), true), QString());
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(server.event(id), created);
        QCOMPARE(occurrences(QStringLiteral("Standup")), shown);

        schedule.remove(shown.at(2));
        QVERIFY(waitForText(history(), QStringLiteral("delete event 'Standup'")));
        QVERIFY(!server.event(id));
        QVERIFY(occurrences(QStringLiteral("Standup")).isEmpty());
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(server.event(id), created);
        QCOMPARE(occurrences(QStringLiteral("Standup")), shown);
        server.deleteMeet(made);
    }
};

TOLVANE_GUI_TEST_MAIN(UndoGoogleModeTest)
#include "UndoGoogleModeTest.moc"
