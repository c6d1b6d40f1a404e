// A second Tolvane as far as the stores are concerned: a separate process that makes the key of
// "Tasks.Tasks" in the session's keyring and writes tasks through the local repository, started
// by the tests that need two writers.
//
//   tst_store_driver FOLDER start COUNT LIST  on "go", makes the store's key and adds COUNT tasks
//                                             to LIST, as Tolvane's first start does
//   tst_store_driver FOLDER add COUNT LIST    with the key made, on "go" adds COUNT tasks
//   tst_store_driver FOLDER hold COUNT LIST   with the key made, on "go" adds COUNT tasks in one
//                                             exclusive transaction held open until the next line
//   tst_store_driver FOLDER logbook COUNT LIST with the key made, on "go" saves COUNT revisions of
//                                             the logbook text of project LIST, as the editor's
//                                             autosave does; each saved one is printed "ack <n>"
//   tst_store_driver FOLDER alarms COUNT LIST  on "go", arms COUNT alarms in the pending-requests
//                                             file of FOLDER, as the alarm scheduler does, and
//                                             takes back every third one armed before; prints
//                                             "ack add <id> .", "removing <id> ." and
//                                             "ack remove <id> ." (the dot tells a whole line
//                                             from one cut short)
//
// It prints "ready" once connected to the keyring and waits for a line on stdin, so that a test
// can let two of them go at the same moment. Every task the store acknowledged is printed as
// "ack <id>", every refusal as "fail <text>".
#include "LogbookRevisions.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemClock.h"
#include "platform/SystemSecureRandom.h"
#include "platform/notifications/LiveUserNotificationCenter.h"
#include "storage/RealmTable.h"
#include "tasks/applications/BitacoraApplication.h"
#include "tasks/database/TaskRealmModel.h"
#include "tasks/repositories/local/LocalBitacoraRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>
#include <iostream>
#include <string>

namespace {

QTextStream out(stdout);

void say(const QString& line)
{
    out << line << Qt::endl;
}

void waitForLine()
{
    std::string line;
    std::getline(std::cin, line);
}

TaskEntity taskNumbered(const QUuid& list, int number)
{
    return TaskEntity {.talId = list, .tasTitle = QStringLiteral("Task %1").arg(number)};
}

// The requests go a day ahead, so that none comes due (and leaves the file) while the test runs.
int armAlarms(const QString& folder, int count, const QUuid& run)
{
    LiveUserNotificationCenter::Options options;
    options.storeFilePath = folder + QStringLiteral("/pending-notifications.json");
    options.clock = std::make_shared<SystemClock>();
    LiveUserNotificationCenter center(std::move(options));
    const QDateTime at = QDateTime::currentDateTime().addDays(1);
    QStringList armed;
    say(QStringLiteral("ready"));
    waitForLine();
    for (int number = 0; number < count; ++number) {
        const QString identifier = QStringLiteral("%1-%2").arg(run.toString(QUuid::WithoutBraces)).arg(number);
        UserNotificationRequest request {identifier,
            {QStringLiteral("Meet %1").arg(number), QStringLiteral("Starts in 5 minutes"),
                {{QStringLiteral("meetId"), identifier}}, QString()},
            UserNotificationTrigger::calendar(at.addSecs(number))};
        try {
            center.add(request);
        } catch (const UserNotificationError& error) {
            say(QStringLiteral("fail ") + QString::fromUtf8(error.what()));
            continue;
        }
        say(QStringLiteral("ack add %1 .").arg(identifier));
        armed.append(identifier);
        if (number % 3 == 2) {
            const QString taken = armed.takeFirst();
            // A kill between the removal and its acknowledgement leaves it done but unconfirmed.
            say(QStringLiteral("removing %1 .").arg(taken));
            center.removePendingRequests({taken});
            say(QStringLiteral("ack remove %1 .").arg(taken));
        }
    }
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 5) {
        std::fprintf(stderr, "usage: tst_store_driver FOLDER start|add|hold|logbook|alarms COUNT LIST\n");
        return 2;
    }
    const QString folder = arguments.at(1);
    const QString mode = arguments.at(2);
    const int count = arguments.at(3).toInt();
    const QUuid list = QUuid::fromString(arguments.at(4));

    if (mode == QStringLiteral("alarms"))
        return armAlarms(folder, count, list);

    RealmConfiguration defaults;
    defaults.fileURL = folder + QStringLiteral("/default.realm");
    const auto keychain = std::make_shared<SecretServiceKeychain>();
    const RealmEncryptedConfigurationFactory factory(keychain, std::make_shared<SystemSecureRandom>(), defaults);
    const auto configure = [&]() -> std::optional<TasksDatabase> {
        const ResultEntity made = TasksDatabase::make(factory);
        if (!made.result) {
            say(QStringLiteral("fail ") + made.firstMessage().value_or(QString()));
            return std::nullopt;
        }
        return *made.dataAs<TasksDatabase>();
    };

    if (mode == QStringLiteral("logbook")) {
        const ResultEntity made = BitacoraDatabase::make(factory);
        if (!made.result) {
            say(QStringLiteral("fail ") + made.firstMessage().value_or(QString()));
            return 1;
        }
        const BitacoraApplication logbook(
            std::make_shared<LocalBitacoraRepositoryImpl>(*made.dataAs<BitacoraDatabase>()));
        say(QStringLiteral("ready"));
        waitForLine();
        for (int revision = 1; revision <= count; ++revision) {
            const TaskResultEntity saved
                = logbook.saveText(list, LogbookRevisions::day, LogbookRevisions::text(revision), list);
            say(saved.result ? QStringLiteral("ack %1").arg(revision)
                             : QStringLiteral("fail ") + saved.firstMessage().value_or(QString()));
        }
        return 0;
    }

    std::optional<TasksDatabase> database;
    if (mode == QStringLiteral("start")) {
        // The session to the keyring is opened now, so that after "go" only the lookup and
        // the saving of the key are left to race.
        keychain->copyMatching(QStringLiteral("Tolvane.Warmup"), RealmEncryptedConfigurationFactory::keychainAccount);
        say(QStringLiteral("ready"));
        waitForLine();
        database = configure();
    } else {
        database = configure();
        say(QStringLiteral("ready"));
        waitForLine();
    }
    if (!database)
        return 1;

    if (mode != QStringLiteral("hold")) {
        LocalTaskRepositoryImpl tasks(*database);
        for (int number = 0; number < count; ++number) {
            const TaskEntity task = taskNumbered(list, number);
            const TaskResultEntity created = tasks.create(task);
            say(created.result ? QStringLiteral("ack ") + task.tasId.toString(QUuid::WithoutBraces)
                               : QStringLiteral("fail ") + created.firstMessage().value_or(QString()));
        }
        return 0;
    }

    // Exclusive: not even a reader gets in until the commit.
    const auto handle = RealmDatabase::open(database->configuration);
    handle->execute(QStringLiteral("BEGIN EXCLUSIVE"));
    QList<TaskEntity> added;
    for (int number = 0; number < count; ++number) {
        added.append(taskNumbered(list, number));
        RealmTable<TaskRealmModel>(*handle).add(TaskRealmModel::fromEntity(added.constLast()));
    }
    say(QStringLiteral("holding"));
    waitForLine();
    try {
        handle->commitWrite();
    } catch (const RealmError& error) {
        say(QStringLiteral("fail ") + error.localizedDescription());
        return 1;
    }
    for (const TaskEntity& task : std::as_const(added))
        say(QStringLiteral("ack ") + task.tasId.toString(QUuid::WithoutBraces));
    return 0;
}
