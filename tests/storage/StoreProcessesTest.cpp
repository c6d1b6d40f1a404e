#include "LogbookRevisions.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemClock.h"
#include "platform/SystemSecureRandom.h"
#include "platform/notifications/LiveUserNotificationCenter.h"
#include "storage/RealmDatabase.h"
#include "support/TestMain.h"
#include "tasks/applications/BitacoraApplication.h"
#include "tasks/repositories/local/LocalBitacoraRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>

#include <memory>

namespace {

const QString account = QStringLiteral("RealmEncryptionKey");

// How many times each race is run; raise it to hunt for rare losses.
int runs()
{
    return qEnvironmentVariableIntValue("TOLVANE_STORE_RACE_RUNS") > 0
        ? qEnvironmentVariableIntValue("TOLVANE_STORE_RACE_RUNS")
        : 4;
}

// One tst_store_driver process and what it printed.
class Driver {
public:
    Driver(const QString& folder, const QString& mode, int count, const QUuid& list)
    {
        m_process.setProgram(QStringLiteral(TOLVANE_STORE_DRIVER));
        m_process.setArguments({folder, mode, QString::number(count), list.toString(QUuid::WithoutBraces)});
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start();
    }

    ~Driver()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }

    // Blocks until the driver printed line (or ended); false when it never did.
    bool waitFor(const QString& line)
    {
        while (true) {
            while (m_process.canReadLine()) {
                const QString read = QString::fromUtf8(m_process.readLine()).trimmed();
                m_lines.append(read);
                if (read == line)
                    return true;
            }
            if (!m_process.waitForReadyRead(120000))
                return false;
        }
    }

    void proceed() { m_process.write("go\n"); }

    // Blocks until the driver acknowledged count tasks, then kills it on the spot.
    void killAfter(int count)
    {
        int acknowledged = 0;
        while (acknowledged < count && m_process.waitForReadyRead(120000)) {
            while (m_process.canReadLine()) {
                const QString read = QString::fromUtf8(m_process.readLine()).trimmed();
                m_lines.append(read);
                acknowledged += read.startsWith(QStringLiteral("ack ")) ? 1 : 0;
            }
        }
        m_process.kill();
        m_process.waitForFinished();
    }

    // Lets the driver write for the given time, then kills it wherever it is.
    void killWithin(int milliseconds)
    {
        proceed();
        if (!m_process.waitForFinished(milliseconds)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }

    // The last logbook revision the store acknowledged (0 for none), once the driver has ended.
    int lastRevision()
    {
        finish();
        int last = 0;
        for (const QString& line : std::as_const(m_lines)) {
            bool number = false;
            const int revision = line.startsWith(QStringLiteral("ack ")) ? line.mid(4).toInt(&number) : 0;
            last = number ? std::max(last, revision) : last;
        }
        return last;
    }

    // The ids of the tasks the store acknowledged, once the driver has ended.
    QSet<QString> acknowledged()
    {
        finish();
        QSet<QString> ids;
        for (const QString& line : std::as_const(m_lines)) {
            // A line cut short by the kill acknowledges nothing.
            if (line.startsWith(QStringLiteral("ack ")) && !QUuid::fromString(line.mid(4)).isNull())
                ids.insert(line.mid(4).toUpper());
            else if (line.startsWith(QStringLiteral("fail ")))
                m_failures.append(line.mid(5));
        }
        return ids;
    }

    const QStringList& failures() const { return m_failures; }

    // Every line the driver printed, once it has ended.
    QStringList lines()
    {
        finish();
        return m_lines;
    }

    void finish()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished(300000);
        m_lines += QString::fromUtf8(m_process.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    int exitCode() const { return m_process.exitCode(); }

private:
    QProcess m_process;
    QStringList m_lines;
    QStringList m_failures;
};

} // namespace

// Two processes on one store, as with a second Tolvane window or a restart while the first is
// still quitting: whatever either was told is saved must still be there afterwards.
class StoreProcessesTest : public QObject {
    Q_OBJECT

    std::shared_ptr<SecretServiceKeychain> keychain = std::make_shared<SecretServiceKeychain>();
    std::unique_ptr<QTemporaryDir> folder;
    const QUuid list = QUuid::createUuid();

    TasksDatabase database() const
    {
        RealmConfiguration defaults;
        defaults.fileURL = folder->filePath(QStringLiteral("default.realm"));
        const RealmEncryptedConfigurationFactory factory(keychain, std::make_shared<SystemSecureRandom>(), defaults);
        const ResultEntity made = TasksDatabase::make(factory);
        if (!made.result)
            qFatal("no configuration: %s", qPrintable(made.firstMessage().value_or(QString())));
        return *made.dataAs<TasksDatabase>();
    }

    QSet<QString> surviving() const
    {
        const TaskResultEntity listed = LocalTaskRepositoryImpl(database()).list(list);
        QSet<QString> ids;
        if (listed.result) {
            for (const TaskEntity& task : *listed.dataAs<QList<TaskEntity>>())
                ids.insert(task.tasId.toString(QUuid::WithoutBraces).toUpper());
        }
        return ids;
    }

    BitacoraDatabase logbookDatabase() const
    {
        RealmConfiguration defaults;
        defaults.fileURL = folder->filePath(QStringLiteral("default.realm"));
        const RealmEncryptedConfigurationFactory factory(keychain, std::make_shared<SystemSecureRandom>(), defaults);
        const ResultEntity made = BitacoraDatabase::make(factory);
        if (!made.result)
            qFatal("no configuration: %s", qPrintable(made.firstMessage().value_or(QString())));
        return *made.dataAs<BitacoraDatabase>();
    }

    // The logbook texts saved for the driver's project, every entry of every day.
    QStringList logbookTexts() const
    {
        const TaskResultEntity listed = LocalBitacoraRepositoryImpl(logbookDatabase()).list(list);
        if (!listed.result)
            qFatal("the logbook cannot be listed: %s", qPrintable(listed.firstMessage().value_or(QString())));
        QStringList texts;
        for (const BitacoraEntryEntity& entry : *listed.dataAs<QList<BitacoraEntryEntity>>())
            texts.append(entry.bteContent);
        return texts;
    }

    QString integrity(const RealmConfiguration& configuration) const
    {
        const QList<RealmRow> rows
            = RealmDatabase::open(configuration)->query(QStringLiteral("PRAGMA integrity_check"));
        QStringList lines;
        for (const RealmRow& row : rows)
            lines.append(row.value(0).toString());
        return lines.join(QLatin1Char('\n'));
    }

    QStringList setAside() const
    {
        return QDir(folder->path()).entryList({QStringLiteral("*.unreadable-*")}, QDir::Files);
    }

    // Two drivers adding perDriver tasks each, started together; returns how many acknowledged
    // tasks are missing afterwards.
    int lostInARace(const QString& mode, int perDriver)
    {
        Driver first(folder->path(), mode, perDriver, list);
        Driver second(folder->path(), mode, perDriver, list);
        if (!first.waitFor(QStringLiteral("ready")) || !second.waitFor(QStringLiteral("ready")))
            qFatal("a driver did not start");
        first.proceed();
        second.proceed();
        const QSet<QString> acknowledged = first.acknowledged() + second.acknowledged();
        const QSet<QString> kept = surviving();
        const int lost = int((acknowledged - kept).size());
        qInfo("acknowledged %lld, kept %lld, lost %d; failures: %s", qlonglong(acknowledged.size()),
            qlonglong(kept.size()), lost,
            qPrintable((first.failures() + second.failures()).join(QStringLiteral("; "))));
        return lost;
    }

private Q_SLOTS:
    void init()
    {
        keychain->remove(TasksDatabaseSchema::name, account);
        folder = std::make_unique<QTemporaryDir>();
    }

    void shouldFailAReadWhileAnotherProcessHoldsTheStoreAndLoseNothing()
    {
        LocalTaskRepositoryImpl tasks(database());
        for (int number = 0; number < 10; ++number)
            QVERIFY(tasks.create(TaskEntity {.talId = list, .tasTitle = QStringLiteral("Before")}).result);
        const QSet<QString> before = surviving();

        Driver holder(folder->path(), QStringLiteral("hold"), 20, list);
        QVERIFY(holder.waitFor(QStringLiteral("ready")));
        holder.proceed();
        QVERIFY(holder.waitFor(QStringLiteral("holding")));

        // Waits out the busy timeout, then gives up on this read only.
        const TaskResultEntity listed = tasks.list(list);
        QVERIFY(!listed.result);
        QCOMPARE(listed.infrastructureMessage, RealmDatabase::busyMessage);
        const TaskResultEntity created = tasks.create(TaskEntity {.talId = list, .tasTitle = QStringLiteral("During")});
        QCOMPARE(created.infrastructureMessage, RealmDatabase::busyMessage);

        holder.proceed();
        const QSet<QString> held = holder.acknowledged();
        QCOMPARE(holder.failures(), QStringList());
        QCOMPARE(held.size(), 20);
        QCOMPARE(surviving(), before + held);
        QCOMPARE(setAside(), QStringList());
    }

    void shouldKeepEveryAcknowledgedTaskOfAProcessKilledWhileWriting()
    {
        database();
        Driver writer(folder->path(), QStringLiteral("add"), 100000, list);
        QVERIFY(writer.waitFor(QStringLiteral("ready")));
        writer.proceed();
        writer.killAfter(60);

        const QSet<QString> acknowledged = writer.acknowledged();
        QVERIFY(acknowledged.size() >= 60);
        const QSet<QString> kept = surviving();
        QVERIFY2(
            (acknowledged - kept).isEmpty(), qPrintable(QStringLiteral("%1 lost").arg((acknowledged - kept).size())));
        // At most the one in flight when it died made it without being acknowledged.
        QVERIFY(kept.size() - acknowledged.size() <= 1);
        QCOMPARE(setAside(), QStringList());
    }

    // A power cut or a kill can come at any instruction: while the file is created, in the middle
    // of a transaction, during a commit. Every kill lands at a random moment of a writer adding
    // tasks to the same store; nothing it was told is saved may be missing afterwards, and the
    // file must stay sound.
    void shouldKeepEveryAcknowledgedTaskOverManyKillsAtRandomMoments()
    {
        const int wantedKills = 50;
        const quint32 seed = QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        qInfo("seed %u", seed);
        database();
        QElapsedTimer elapsed;
        elapsed.start();
        QSet<QString> acknowledged;
        int kills = 0;
        // Bounded in time so that a slow machine (a sanitized build) still ends well within the
        // test's timeout; every kill made is checked in full.
        while (kills < wantedKills && elapsed.elapsed() < 240000) {
            Driver writer(folder->path(), QStringLiteral("add"), 100000, list);
            QVERIFY(writer.waitFor(QStringLiteral("ready")));
            writer.killWithin(int(random.bounded(400)));
            ++kills;
            acknowledged += writer.acknowledged();
            const QSet<QString> kept = surviving();
            QVERIFY2((acknowledged - kept).isEmpty(),
                qPrintable(QStringLiteral("%1 lost after kill %2").arg((acknowledged - kept).size()).arg(kills)));
            QCOMPARE(integrity(database().configuration), QStringLiteral("ok"));
            QCOMPARE(setAside(), QStringList());
        }
        qInfo("%d kills, %lld acknowledged tasks, 0 lost, in %lld ms", kills, qlonglong(acknowledged.size()),
            qlonglong(elapsed.elapsed()));
        QVERIFY(kills >= 10);
        QVERIFY(!acknowledged.isEmpty());
    }

    // The logbook's autosave rewrites one entry again and again while someone types; a kill in the
    // middle of a save must leave the last acknowledged text or a newer one, whole, and still one
    // entry for the day.
    void shouldKeepTheLastAcknowledgedLogbookTextOverManyKills()
    {
        const int wantedKills = 50;
        const quint32 seed = QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        qInfo("seed %u", seed);
        logbookDatabase();
        QElapsedTimer elapsed;
        elapsed.start();
        int kills = 0;
        int acknowledged = 0;
        while (kills < wantedKills && elapsed.elapsed() < 240000) {
            Driver writer(folder->path(), QStringLiteral("logbook"), 100000, list);
            QVERIFY(writer.waitFor(QStringLiteral("ready")));
            writer.killWithin(int(random.bounded(400)));
            ++kills;
            const int last = writer.lastRevision();
            const QStringList texts = logbookTexts();
            if (acknowledged == 0 && last == 0 && texts.isEmpty())
                continue;
            QCOMPARE(texts.size(), 1);
            const int kept = LogbookRevisions::revisionOf(texts.constFirst());
            QVERIFY2(kept >= 1, "the saved text is torn");
            // A later writer starts again at revision 1, so each is held to its own last save.
            if (last > 0)
                QVERIFY2(kept >= last && kept <= last + 1,
                    qPrintable(QStringLiteral("kept revision %1, acknowledged %2").arg(kept).arg(last)));
            acknowledged += last;
            QCOMPARE(integrity(logbookDatabase().configuration), QStringLiteral("ok"));
            QCOMPARE(setAside(), QStringList());
        }
        qInfo("%d kills, %d acknowledged saves, in %lld ms", kills, acknowledged, qlonglong(elapsed.elapsed()));
        QVERIFY(kills >= 10);
        QVERIFY(acknowledged > 0);
    }

    // The alarm scheduler keeps its pending requests in one JSON file, rewritten on every change.
    // A kill at any moment must leave a file that reads whole, with every request whose arming
    // was acknowledged and none whose removal was.
    void shouldKeepEveryAcknowledgedAlarmOverManyKillsAtRandomMoments()
    {
        const int wantedKills = 50;
        const quint32 seed = QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        qInfo("seed %u", seed);
        const QString file = folder->filePath(QStringLiteral("pending-notifications.json"));
        QElapsedTimer elapsed;
        elapsed.start();
        QSet<QString> armed;
        QSet<QString> removed;
        QSet<QString> removing;
        int kills = 0;
        while (kills < wantedKills && elapsed.elapsed() < 240000) {
            // Each writer names its requests apart, so that its removals never touch another's.
            Driver writer(folder->path(), QStringLiteral("alarms"), 300, QUuid::createUuid());
            QVERIFY(writer.waitFor(QStringLiteral("ready")));
            writer.killWithin(int(random.bounded(400)));
            ++kills;
            for (const QString& line : writer.lines()) {
                // A line cut short by the kill lacks its closing dot and acknowledges nothing.
                const QStringList words = line.split(QLatin1Char(' '));
                if (words.size() == 4 && words.at(0) == QLatin1String("ack") && words.at(3) == QLatin1String("."))
                    (words.at(1) == QLatin1String("add") ? armed : removed).insert(words.at(2));
                // Begun, perhaps done, not acknowledged: either outcome is right.
                if (words.size() == 3 && words.at(0) == QLatin1String("removing") && words.at(2) == QLatin1String("."))
                    removing.insert(words.at(1));
            }

            QFile stored(file);
            if (!stored.exists() && armed.isEmpty())
                continue;
            QVERIFY(stored.open(QIODevice::ReadOnly));
            QJsonParseError error;
            const QJsonDocument document = QJsonDocument::fromJson(stored.readAll(), &error);
            QVERIFY2(error.error == QJsonParseError::NoError && document.isArray(),
                qPrintable(QStringLiteral("the file is torn after kill %1: %2").arg(kills).arg(error.errorString())));

            LiveUserNotificationCenter::Options options;
            options.storeFilePath = file;
            options.clock = std::make_shared<SystemClock>();
            const LiveUserNotificationCenter center(std::move(options));
            QSet<QString> kept;
            for (const UserNotificationRequest& request : center.pendingRequests())
                kept.insert(request.identifier);
            QCOMPARE(qsizetype(kept.size()), document.array().size());
            const QSet<QString> lost = (armed - removing) - kept;
            QVERIFY2(lost.isEmpty(), qPrintable(QStringLiteral("%1 lost after kill %2").arg(lost.size()).arg(kills)));
            const QSet<QString> back = removed & kept;
            QVERIFY2(back.isEmpty(),
                qPrintable(QStringLiteral("%1 removed ones back after kill %2").arg(back.size()).arg(kills)));
        }
        qInfo("%d kills, %lld alarms armed and %lld removed with acknowledgement, 0 lost, in %lld ms", kills,
            qlonglong(armed.size()), qlonglong(removed.size()), qlonglong(elapsed.elapsed()));
        QVERIFY(kills >= 10);
        QVERIFY(!armed.isEmpty());
        QVERIFY(!removed.isEmpty());
    }

    void shouldKeepEveryTaskWhenTwoProcessesCreateTheStoreTogether()
    {
        int lost = 0;
        for (int run = 0; run < runs(); ++run) {
            init();
            database(); // the key exists; the file does not
            QVERIFY(!QFile::exists(folder->filePath(QStringLiteral("Tasks.Tasks.realm"))));
            lost += lostInARace(QStringLiteral("add"), 100);
            QCOMPARE(setAside(), QStringList());
        }
        qInfo("%d lost in %d runs", lost, runs());
        QCOMPARE(lost, 0);
    }

    void shouldAgreeOnOneKeyWhenTwoProcessesStartFirstTogether()
    {
        int lost = 0;
        for (int run = 0; run < runs(); ++run) {
            init();
            lost += lostInARace(QStringLiteral("start"), 100);
            QCOMPARE(setAside(), QStringList());
            QCOMPARE(keychain->copyMatching(TasksDatabaseSchema::name, account).data,
                database().configuration.encryptionKey);
        }
        qInfo("%d lost in %d runs", lost, runs());
        QCOMPARE(lost, 0);
    }
};

TOLVANE_TEST_MAIN(StoreProcessesTest)
#include "StoreProcessesTest.moc"
