// A second Tolvane as far as the stores are concerned: a separate process that makes the key of
// "Tasks.Tasks" in the session's keyring and writes tasks through the local repository, started
// by the tests that need two writers.
//
//   tst_store_driver FOLDER add COUNT LIST    adds COUNT tasks to LIST
//   tst_store_driver FOLDER hold COUNT LIST   adds COUNT tasks in one exclusive transaction held
//                                             open until a line arrives on stdin
//
// It prints "ready" and waits for a line on stdin before touching the keyring or the store, so
// that a test can start two of them at the same moment. Every task the store acknowledged is
// printed as "ack <id>", every refusal as "fail <text>".
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "storage/RealmTable.h"
#include "tasks/database/TaskRealmModel.h"
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

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 5) {
        std::fprintf(stderr, "usage: tst_store_driver FOLDER add|hold COUNT LIST\n");
        return 2;
    }
    const QString folder = arguments.at(1);
    const QString mode = arguments.at(2);
    const int count = arguments.at(3).toInt();
    const QUuid list = QUuid::fromString(arguments.at(4));

    say(QStringLiteral("ready"));
    waitForLine();

    RealmConfiguration defaults;
    defaults.fileURL = folder + QStringLiteral("/default.realm");
    const RealmEncryptedConfigurationFactory factory(
        std::make_shared<SecretServiceKeychain>(), std::make_shared<SystemSecureRandom>(), defaults);
    const ResultEntity made = TasksDatabase::make(factory);
    if (!made.result) {
        say(QStringLiteral("fail ") + made.firstMessage().value_or(QString()));
        return 1;
    }
    const TasksDatabase database = *made.dataAs<TasksDatabase>();

    if (mode == QStringLiteral("add")) {
        LocalTaskRepositoryImpl tasks(database);
        for (int number = 0; number < count; ++number) {
            const TaskEntity task = taskNumbered(list, number);
            const TaskResultEntity created = tasks.create(task);
            say(created.result ? QStringLiteral("ack ") + task.tasId.toString(QUuid::WithoutBraces)
                               : QStringLiteral("fail ") + created.firstMessage().value_or(QString()));
        }
        return 0;
    }

    // Exclusive: not even a reader gets in until the commit.
    const auto handle = RealmDatabase::open(database.configuration);
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
