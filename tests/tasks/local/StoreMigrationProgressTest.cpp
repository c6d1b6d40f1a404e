#include "screens/common/StoreMigrationProgress.h"

#include "platform/SecretServiceKeychain.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"
#include "tasks/database/TasksDatabase.h"

#include <QFile>
#include <QProgressDialog>
#include <QSignalSpy>
#include <QTranslator>
#include <QtConcurrent/QtConcurrentRun>

namespace {

// A store the previous version wrote, with the key it was made with.
const QString fixtureStore = QStringLiteral(TOLVANE_TASKS_FIXTURES "/Tasks.Tasks.v1.realm");
const QString fixtureKey = QStringLiteral(TOLVANE_TASKS_FIXTURES "/Tasks.Tasks.v1.key.hex");
const QUuid fixtureList(QStringLiteral("{6f1c3d52-0a55-4c4e-9a0e-1b2f3c4d5e02}"));

} // namespace

// The notice shown while a local store is brought to this version's schema, over the real
// stores the program opens (the session's keyring, the backup taken before the migration).
class StoreMigrationProgressTest : public QObject {
    Q_OBJECT

    std::unique_ptr<AppFixture> m_app;
    SecretServiceKeychain m_keychain;
    QTranslator m_english;

    // Reads the old store on another thread, as the screens do; the first read migrates it.
    // Waited for without turning the event loop: the migration never waits for the window.
    int tasksReadOnAnotherThread()
    {
        const TaskResultEntity made = m_app->services().tasksApplications(false);
        const auto apps = *made.dataAs<TasksApplicationFactory::Applications>();
        QFuture<TaskResultEntity> read = QtConcurrent::run([apps] { return apps.tasks.list(fixtureList); });
        read.waitForFinished();
        const TaskResultEntity listed = read.result();
        return listed.result ? int(listed.dataAs<QList<TaskEntity>>()->size()) : -1;
    }

    static QList<bool> migrationNotices(const QSignalSpy& posted)
    {
        QList<bool> notices;
        for (const QList<QVariant>& post : posted) {
            if (post.value(0).toString() == NotificationName::storeMigrationRunning)
                notices.append(post.value(1).toBool());
        }
        return notices;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&m_english);
    }

    void init()
    {
        m_app = std::make_unique<AppFixture>();
        const QString store = m_app->directory() + QLatin1Char('/') + TasksDatabaseSchema::name + ".realm";
        QVERIFY(QFile::copy(fixtureStore, store));
        QFile::setPermissions(store, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        QFile key(fixtureKey);
        QVERIFY(key.open(QIODevice::ReadOnly));
        m_keychain.remove(TasksDatabaseSchema::name, RealmEncryptedConfigurationFactory::keychainAccount);
        QCOMPARE(m_keychain.add(TasksDatabaseSchema::name, RealmEncryptedConfigurationFactory::keychainAccount,
                     QByteArray::fromHex(key.readAll().trimmed())),
            KeychainStatus::success);
    }

    void cleanup()
    {
        m_app.reset();
        m_keychain.remove(TasksDatabaseSchema::name, RealmEncryptedConfigurationFactory::keychainAccount);
    }

    void aMigrationPastTheThresholdShowsTheNoticeUntilItEnds()
    {
        QWidget window;
        window.resize(600, 400);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        // Past it at once: what a slow migration looks like, without timing one.
        StoreMigrationProgress progress(m_app->notificationCenter(), &window, 0);
        QSignalSpy shown(&progress, &StoreMigrationProgress::shown);
        QSignalSpy hidden(&progress, &StoreMigrationProgress::hidden);
        QString text;
        bool modal = false;
        connect(&progress, &StoreMigrationProgress::shown, this, [&] {
            text = progress.dialog()->labelText();
            modal = progress.dialog()->isVisible() && progress.dialog()->isModal();
        });

        QCOMPARE(tasksReadOnAnotherThread(), 5);
        QVERIFY(!hidden.isEmpty() || hidden.wait());
        QCOMPARE(shown.size(), 1);
        QCOMPARE(text, QStringLiteral("Updating your data…"));
        QVERIFY(modal);
        QVERIFY(!progress.dialog());

        // Migrated once: the next opening has nothing to do and tells nothing (the posts are
        // made on the reading thread, before its read ends).
        QSignalSpy posted(&m_app->notificationCenter(), &NotificationCenter::posted);
        QCOMPARE(tasksReadOnAnotherThread(), 5);
        QCOMPARE(migrationNotices(posted), QList<bool>());
    }

    void aQuickMigrationDoesNotFlashIt()
    {
        QWidget window;
        window.show();
        StoreMigrationProgress progress(m_app->notificationCenter(), &window, 60 * 1000);
        QSignalSpy shown(&progress, &StoreMigrationProgress::shown);
        QSignalSpy posted(&m_app->notificationCenter(), &NotificationCenter::posted);

        QCOMPARE(tasksReadOnAnotherThread(), 5);
        // Both ends of the migration were told; once the window has heard them, nothing showed.
        QCOMPARE(migrationNotices(posted), QList<bool>({true, false}));
        QCoreApplication::processEvents();
        QVERIFY(shown.isEmpty());
        QVERIFY(!progress.dialog());
    }
};

TOLVANE_GUI_TEST_MAIN(StoreMigrationProgressTest)
#include "StoreMigrationProgressTest.moc"
