#include "LocalAccount.h"
#include "support/TestMain.h"
#include "transfer/BitacoraMarkdownExport.h"
#include "transfer/CsvTable.h"
#include "transfer/CsvTaskImport.h"
#include "transfer/MeetsIcsExport.h"
#include "transfer/TasksCsvExport.h"
#include "transfer/TasksImporter.h"
#include "transfer/TasksJsonFormat.h"
#include "transfer/TasksSnapshotReader.h"

#define LIBICAL_GLIB_UNSTABLE_API 1
#include <libical-glib/libical-glib.h>

namespace {

const QUuid owner = QUuid::fromString(QStringLiteral("0b3c6f4e-7a51-4d2e-9a0f-2f1f8f6f1a11"));
const QDate firstDay(2026, 11, 1);
const QDate lastDay(2026, 11, 30);

QDateTime at(int day, int hour, int minute = 0)
{
    return QDateTime(QDate(2026, 11, day), QTime(hour, minute));
}

template <typename T> T created(const ResultEntity& result)
{
    if (!result.result)
        qFatal("setup failed: %s", qPrintable(result.firstMessage().value_or(QString())));
    return *result.dataAs<T>();
}

// Two projects with lists, tasks in every state, daily tasks on several days and a logbook.
void fill(const TasksRepositories& account)
{
    const QString names[] = {QStringLiteral("Home, \"sweet\" home"), QStringLiteral("Work")};
    int n = 0;
    for (const QString& name : names) {
        const auto project = created<ProjectEntity>(account.projects->create(
            {QUuid::createUuid(), owner, name, QStringLiteral("About %1\nsecond line").arg(name), n == 0}));
        for (int l = 0; l < 3; ++l) {
            const auto list = created<TaskListEntity>(account.taskLists->create(
                {QUuid::createUuid(), project.prjId, QStringLiteral("List %1").arg(l), QStringLiteral("d"), l == 0}));
            for (int t = 0; t < 12; ++t) {
                TaskEntity task {QUuid::createUuid(), project.prjId, list.talId,
                    QStringLiteral("Task %1,%2").arg(l).arg(t), t % 3 == 0, std::nullopt, std::nullopt};
                if (t % 2 == 0)
                    task.tasDueDate = at(1 + t, 9, 30);
                if (t % 5 != 4)
                    task.tasEisenhowerTag = EisenhowerTag::allCases.at(t % 4);
                // Schedules of every shape: a time of day, rules, later occurrences, reminders
                // and the time a done task was done.
                task.tasDueHasTime = t % 4 == 0;
                if (t % 4 == 2) {
                    task.tasRecurrence = TaskRecurrenceEntity {.frequency = RecurrenceFrequencyEnum::monthly,
                        .interval = 1 + t % 3,
                        .weekdayOrdinal = -1,
                        .ordinalWeekday = Qt::Friday,
                        .anchor = RecurrenceAnchorEnum::completion,
                        .endAfterCount = 9,
                        .endOnDate = QDate(2027, 6, 30)};
                    task.tasOccurrence = 2 + l;
                }
                if (t == 5)
                    task.tasRecurrence = TaskRecurrenceEntity {.weekdays = {Qt::Monday, Qt::Thursday}, .monthDay = -1};
                if (t % 2 == 0 && t % 3 != 2)
                    task.tasReminderMinutesBefore = 5 * t;
                if (task.tasIsDone)
                    task.tasCompletedAt = at(2 + t, 18, 5);
                created<TaskEntity>(account.tasks->create(task));
            }
        }
        for (int d = 0; d < 4; ++d) {
            created<BitacoraEntryEntity>(account.bitacora->create({QUuid::createUuid(), owner, project.prjId,
                at(3 + d / 2, 10 + d), QStringLiteral("Entry %1 of %2\n\n- point").arg(d).arg(name)}));
        }
        ++n;
    }
    for (int d = 0; d < 6; ++d) {
        auto daily = created<DailyTaskEntity>(account.dailyTasks->create(
            {QUuid::createUuid(), owner, at(2 + d * 4, 8), QStringLiteral("Daily %1").arg(d), false}));
        if (d % 2)
            QVERIFY(account.dailyTasks->setDone(daily.dtaId, true).result);
    }
}

TasksSnapshot snapshotOf(
    const TasksRepositories& account, std::optional<QUuid> project = std::nullopt, bool repositoriesOnly = false)
{
    TransferControl control;
    const ResultEntity read
        = TasksSnapshotReader(account, repositoriesOnly).read({owner, project, firstDay, lastDay}, control);
    if (!read.result)
        qFatal("read failed: %s", qPrintable(read.firstMessage().value_or(QString())));
    return *read.dataAs<TasksSnapshot>();
}

TasksImporter::Outcome imported(
    const TasksRepositories& account, const TasksSnapshot& snapshot, bool repositoriesOnly = false)
{
    TransferControl control;
    return created<TasksImporter::Outcome>(TasksImporter(account, owner, repositoriesOnly).import(snapshot, control));
}

ICalComponent* firstEventNamed(ICalComponent* calendar, const char* summary)
{
    for (ICalComponent* event = i_cal_component_get_first_component(calendar, I_CAL_VEVENT_COMPONENT); event;
         event = i_cal_component_get_next_component(calendar, I_CAL_VEVENT_COMPONENT)) {
        if (qstrcmp(i_cal_component_get_summary(event), summary) == 0)
            return event;
        g_object_unref(event);
    }
    return nullptr;
}

} // namespace

class TransferTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Every field of every record survives JSON export and import into an empty account; a
    // second import creates nothing and counts every record as skipped.
    void jsonExportImportsIntoAnEmptyAccountEqually()
    {
        LocalAccount source('\x31');
        fill(source.repositories);
        const TasksSnapshot exported = snapshotOf(source.repositories);
        QCOMPARE(exported.projects.size(), 2);
        QCOMPARE(exported.tasks.size(), 72);
        QCOMPARE(exported.dailyTasks.size(), 6);
        QCOMPARE(exported.bitacora.size(), 8);
        // Reading the stores whole gives what reading through the repositories gives.
        QCOMPARE(snapshotOf(source.repositories, std::nullopt, true), exported);

        QString error;
        const std::optional<TasksSnapshot> reread = TasksJsonFormat::read(TasksJsonFormat::write(exported), &error);
        QVERIFY2(reread, qPrintable(error));
        QCOMPARE(*reread, exported);

        LocalAccount target('\x32');
        QCOMPARE(imported(target.repositories, *reread), (TasksImporter::Outcome {exported.itemCount(), 0}));
        QCOMPARE(snapshotOf(target.repositories), exported);
        QCOMPARE(imported(target.repositories, *reread), (TasksImporter::Outcome {0, exported.itemCount()}));
        QCOMPARE(snapshotOf(target.repositories), exported);

        // The same through one repository call per record, as into the backend.
        LocalAccount viaRepositories('\x36');
        QCOMPARE(
            imported(viaRepositories.repositories, *reread, true), (TasksImporter::Outcome {exported.itemCount(), 0}));
        QCOMPARE(snapshotOf(viaRepositories.repositories, std::nullopt, true), exported);
        QCOMPARE(
            imported(viaRepositories.repositories, *reread, true), (TasksImporter::Outcome {0, exported.itemCount()}));
    }

    // One project alone, imported into an account that already has it partly: what exists is
    // skipped by id, the rest is added, nothing is doubled.
    void oneProjectImportsIntoAnExistingAccount()
    {
        LocalAccount source;
        fill(source.repositories);
        const TasksSnapshot all = snapshotOf(source.repositories);
        const TasksSnapshot work = snapshotOf(source.repositories, all.projects.at(1).prjId);
        QCOMPARE(work.projects, QList<ProjectEntity> {all.projects.at(1)});
        QCOMPARE(work.tasks.size(), 36);
        QVERIFY(work.dailyTasks.isEmpty());

        LocalAccount target('\x33');
        TasksSnapshot part = work;
        part.tasks = part.tasks.mid(0, 10);
        part.bitacora.clear();
        QCOMPARE(imported(target.repositories, part, true).created, part.itemCount());
        const TasksImporter::Outcome outcome
            = imported(target.repositories, *TasksJsonFormat::read(TasksJsonFormat::write(work)));
        QCOMPARE(outcome, (TasksImporter::Outcome {work.itemCount() - part.itemCount(), part.itemCount()}));
        QCOMPARE(snapshotOf(target.repositories, work.projects.constFirst().prjId), work);
    }

    // A cancelled import stops between records; running it again finishes the rest without
    // doubling anything. Progress counts every record.
    void cancelledImportResumesWithoutDuplicates()
    {
        LocalAccount source;
        fill(source.repositories);
        const TasksSnapshot exported = snapshotOf(source.repositories);
        LocalAccount target('\x34');
        qint64 reported = 0;
        TransferControl* self = nullptr;
        TransferControl stopping([&](qint64 done, qint64 total) {
            QCOMPARE(total, exported.itemCount());
            reported = done;
            if (done == 30)
                self->cancel();
        });
        self = &stopping;
        const ResultEntity first = TasksImporter(target.repositories, owner, true).import(exported, stopping);
        QVERIFY(!first.result);
        QCOMPARE(first.applicationMessage, TasksImporter::cancelledMessage);
        QCOMPARE(reported, 30);

        QCOMPARE(
            imported(target.repositories, exported, true), (TasksImporter::Outcome {exported.itemCount() - 30, 30}));
        QCOMPARE(snapshotOf(target.repositories), exported);
    }

    void malformedJsonIsRefused()
    {
        QString error;
        QVERIFY(!TasksJsonFormat::read("{\"format\":\"other\"}", &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(!TasksJsonFormat::read(
            "{\"format\":\"tolvane-tasks\",\"version\":1,\"tasks\":[{\"tasId\":\"x\"}]}", &error));
        QCOMPARE(error, QStringLiteral("'tasId' is not an identifier"));
        QVERIFY(!TasksJsonFormat::read("not json", &error));
    }

    // CSV export quotes what needs quoting and reads back the same; a file from elsewhere
    // imports through the user's column mapping.
    void csvExportAndMappedImport()
    {
        LocalAccount source;
        fill(source.repositories);
        const TasksSnapshot exported = snapshotOf(source.repositories);
        const QList<QStringList> rows = CsvTable::parse(TasksCsvExport::write(exported));
        QCOMPARE(rows.size(), 1 + exported.tasks.size());
        QCOMPARE(rows.at(0), TasksCsvExport::header());
        QCOMPARE(rows.at(1).at(0), QStringLiteral("Home, \"sweet\" home"));
        QCOMPARE(rows.at(1).at(2), QStringLiteral("Task 0,0"));

        const QString foreign = QStringLiteral("Notes;x,Due date,What,Finished,Priority\r\n"
                                               "\"multi\nline\",2026-12-01,Pay rent,Yes,urgent_important\r\n"
                                               "n,,\"Call \"\"Ana\"\"\",no,planning\r\n"
                                               "empty,,,yes,\r\n"
                                               "n,2026-12-03T15:30:00Z,Read,,\r\n");
        const QList<QStringList> table = CsvTable::parse(foreign);
        QCOMPARE(table.size(), 5);
        QCOMPARE(table.at(1).at(0), QStringLiteral("multi\nline"));
        const CsvTaskImport::Mapping guessed = CsvTaskImport::guess(table.at(0));
        QCOMPARE(guessed.due, 1);
        QCOMPARE(guessed.title, -1);

        LocalAccount target('\x35');
        const auto project = created<ProjectEntity>(
            target.repositories.projects->create({QUuid::createUuid(), owner, QStringLiteral("P"), {}, false}));
        const auto list = created<TaskListEntity>(
            target.repositories.taskLists->create({QUuid::createUuid(), project.prjId, QStringLiteral("L"), {}, true}));
        TransferControl control;
        const ResultEntity result
            = CsvTaskImport(target.repositories.tasks, list)
                  .import(table.mid(1), {.title = 2, .done = 3, .due = 1, .quadrant = 4}, control);
        QCOMPARE(*result.dataAs<CsvTaskImport::Outcome>(), (CsvTaskImport::Outcome {3, 1}));
        const QList<TaskEntity> tasks = *target.repositories.tasks->list(list.talId).dataAs<QList<TaskEntity>>();
        QCOMPARE(tasks.size(), 3);
        QCOMPARE(tasks.at(0).tasTitle, QStringLiteral("Pay rent"));
        QVERIFY(tasks.at(0).tasIsDone);
        QCOMPARE(tasks.at(0).tasDueDate->date(), QDate(2026, 12, 1));
        QCOMPARE(tasks.at(0).tasEisenhowerTag, EisenhowerTagEnum::doIt);
        QCOMPARE(tasks.at(1).tasTitle, QStringLiteral("Call \"Ana\""));
        QVERIFY(!tasks.at(1).tasIsDone);
        QCOMPARE(tasks.at(1).tasEisenhowerTag, EisenhowerTagEnum::planning);
        QCOMPARE(*tasks.at(2).tasDueDate, QDateTime(QDate(2026, 12, 3), QTime(15, 30), Qt::UTC));
        QCOMPARE(tasks.at(2).tasEisenhowerTag, std::nullopt);
        QCOMPARE(tasks.at(2).prjId, project.prjId);
    }

    // One Markdown file per project, one section per day, oldest first.
    void logbookExportsAsMarkdownPerProject()
    {
        TasksSnapshot snapshot;
        const ProjectEntity home {QUuid::createUuid(), owner, QStringLiteral("Home/Garden"), QString(), false};
        const ProjectEntity work {QUuid::createUuid(), owner, QStringLiteral("Work"), QStringLiteral("Job"), false};
        snapshot.projects = {home, work};
        snapshot.bitacora = {{QUuid::createUuid(), owner, work.prjId, at(4, 9), QStringLiteral("Later day")},
            {QUuid::createUuid(), owner, work.prjId, at(2, 9), QStringLiteral("First")},
            {QUuid::createUuid(), owner, work.prjId, at(2, 18), QStringLiteral("Second\n")}};
        const QMap<QString, QString> files = BitacoraMarkdownExport::files(snapshot);
        QCOMPARE(files.keys(), (QStringList {QStringLiteral("Home_Garden.md"), QStringLiteral("Work.md")}));
        QCOMPARE(files.value(QStringLiteral("Home_Garden.md")), QStringLiteral("# Home/Garden\n"));
        QCOMPARE(files.value(QStringLiteral("Work.md")),
            QStringLiteral("# Work\n\nJob\n\n## 2026-11-02\n\nFirst\n\nSecond\n\n## 2026-11-04\n\nLater day\n"));
    }

    // The calendar file parses with libical into real events: a zoned one keeps its instant
    // through its VTIMEZONE, an all-day one is a date with an exclusive end.
    void meetsExportToIcsThatLibicalReads()
    {
        const QTimeZone zone("America/New_York");
        MeetEntity zoned;
        zoned.metId = QUuid::createUuid();
        zoned.metName = QStringLiteral("Planning, weekly");
        zoned.metDate = QDateTime(QDate(2026, 11, 2), QTime(9, 30), zone);
        zoned.metDuration = 5400;
        zoned.metDescription = QStringLiteral("Agenda;\nitems");
        zoned.metLocation = QStringLiteral("Room 4");
        zoned.metUrl = QUrl(QStringLiteral("https://example.com/meet"));
        MeetEntity allDay;
        allDay.metId = QUuid::createUuid();
        allDay.metName = QStringLiteral("Holiday");
        allDay.metDate = QDateTime(QDate(2026, 11, 26), QTime(0, 0), zone);
        allDay.metDuration = 2 * 86400;
        allDay.metIsAllDay = true;

        const QByteArray ics = MeetsIcsExport::write({zoned, allDay}, zone);
        ICalComponent* calendar = i_cal_component_new_from_string(ics.constData());
        QVERIFY(calendar);
        QCOMPARE(i_cal_component_isa(calendar), I_CAL_VCALENDAR_COMPONENT);
        QCOMPARE(i_cal_component_count_components(calendar, I_CAL_VTIMEZONE_COMPONENT), 1);
        QCOMPARE(i_cal_component_count_components(calendar, I_CAL_VEVENT_COMPONENT), 2);
        QVERIFY(ics.contains("TZID="));

        ICalComponent* event = firstEventNamed(calendar, "Planning, weekly");
        QVERIFY(event);
        ICalTime* start = i_cal_component_get_dtstart(event);
        ICalTime* end = i_cal_component_get_dtend(event);
        QVERIFY(i_cal_time_get_timezone(start));
        QCOMPARE(qint64(i_cal_time_as_timet_with_zone(start, i_cal_time_get_timezone(start))),
            zoned.metDate.toSecsSinceEpoch());
        QCOMPARE(qint64(i_cal_time_as_timet_with_zone(end, i_cal_time_get_timezone(end))),
            zoned.endDate().toSecsSinceEpoch());
        QCOMPARE(QString::fromUtf8(i_cal_component_get_description(event)), zoned.metDescription);
        QCOMPARE(QString::fromUtf8(i_cal_component_get_location(event)), *zoned.metLocation);
        g_object_unref(start);
        g_object_unref(end);
        g_object_unref(event);

        event = firstEventNamed(calendar, "Holiday");
        QVERIFY(event);
        start = i_cal_component_get_dtstart(event);
        end = i_cal_component_get_dtend(event);
        QVERIFY(i_cal_time_is_date(start));
        QCOMPARE(QDate(i_cal_time_get_year(start), i_cal_time_get_month(start), i_cal_time_get_day(start)),
            QDate(2026, 11, 26));
        QCOMPARE(
            QDate(i_cal_time_get_year(end), i_cal_time_get_month(end), i_cal_time_get_day(end)), QDate(2026, 11, 28));
        g_object_unref(start);
        g_object_unref(end);
        g_object_unref(event);
        g_object_unref(calendar);
    }
};

TOLVANE_TEST_MAIN(TransferTest)

#include "TransferTest.moc"
