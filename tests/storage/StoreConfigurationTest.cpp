#include "calendar_providers/database/CalendarProviderDatabase.h"
#include "storage/RealmEncryptedConfigurationFactory.h"
#include "support/FakeKeychain.h"
#include "support/FakeSecureRandom.h"
#include "support/TestMain.h"
#include "tasks/database/BitacoraDatabase.h"
#include "tasks/database/DailyTasksDatabase.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TaskListsDatabase.h"
#include "tasks/database/TasksDatabase.h"

namespace {

const QString store = QStringLiteral("Tasks.Projects");
const QString account = QStringLiteral("RealmEncryptionKey");

RealmConfiguration defaultsIn(const QString& directory)
{
    RealmConfiguration configuration;
    configuration.fileURL = directory + QStringLiteral("/default.realm");
    return configuration;
}

} // namespace

class StoreConfigurationTest : public QObject {
    Q_OBJECT

    std::shared_ptr<FakeKeychain> keychain;
    std::shared_ptr<FakeSecureRandom> random;

    RealmEncryptedConfigurationFactory factory(RealmConfiguration defaults = defaultsIn(QStringLiteral("/data")))
    {
        return RealmEncryptedConfigurationFactory(keychain, random, std::move(defaults));
    }

    ResultEntity configure() { return factory().makeConfiguration(store, 1, {}, {}); }

    void verifyRefused(const ResultEntity& outcome, const QString& text)
    {
        QVERIFY(!outcome.result);
        QVERIFY(!outcome.data.has_value());
        QCOMPARE(outcome.infrastructureMessage, std::optional<QString>(text));
        QCOMPARE(outcome.databaseMessage, std::nullopt);
    }

private Q_SLOTS:
    void init()
    {
        keychain = std::make_shared<FakeKeychain>();
        random = std::make_shared<FakeSecureRandom>();
    }

    void shouldMakeAndSaveA64ByteKeyWhenNoneExists()
    {
        const ResultEntity made = configure();

        QVERIFY(made.result);
        const RealmConfiguration& configuration = *made.dataAs<RealmConfiguration>();
        QCOMPARE(configuration.encryptionKey.size(), 64);
        QCOMPARE(keychain->item(store, account), configuration.encryptionKey);
        QCOMPARE(configuration.fileURL, std::optional<QString>(QStringLiteral("/data/Tasks.Projects.realm")));
        QCOMPARE(configuration.schemaVersion, quint64(1));
        QVERIFY(!configuration.readOnly);
        QVERIFY(!configuration.deleteRealmIfMigrationNeeded);
    }

    void shouldReuseTheStoredKeyAsItIs()
    {
        // The length is not checked here: a key that cannot open the file shows when opening.
        keychain->setItem(store, account, QByteArray("short key"));

        const ResultEntity made = configure();

        QVERIFY(made.result);
        QCOMPARE(made.dataAs<RealmConfiguration>()->encryptionKey, QByteArray("short key"));
        QCOMPARE(keychain->addCalls, 0);
    }

    void shouldRefuseToRegenerateOnAnyOtherLookupStatus_data()
    {
        QTest::addColumn<int>("status");
        QTest::newRow("locked") << KeychainStatus::interactionNotAllowed;
        QTest::newRow("no secret service") << KeychainStatus::notAvailable;
        QTest::newRow("positive") << 5;
    }

    void shouldRefuseToRegenerateOnAnyOtherLookupStatus()
    {
        QFETCH(int, status);
        keychain->setItem(store, account, QByteArray(64, 'k'));
        keychain->lookupStatus = status;

        verifyRefused(configure(),
            QStringLiteral("Keychain lookup failed with status %1; refusing to regenerate "
                           "the encryption key")
                .arg(status));
        QCOMPARE(keychain->item(store, account), QByteArray(64, 'k'));
        QCOMPARE(keychain->addCalls, 0);
    }

    void shouldRefuseAFoundItemWithoutData()
    {
        keychain->lookupReturnsNoData = true;
        verifyRefused(configure(),
            QStringLiteral("Keychain lookup failed with status 0; refusing to regenerate the encryption key"));
        QCOMPARE(keychain->addCalls, 0);
    }

    void shouldFailWhenNoRandomKeyCanBeMade()
    {
        random->status = -1;
        verifyRefused(configure(), QStringLiteral("Failed to generate the encryption key"));
        QCOMPARE(keychain->addCalls, 0);
    }

    void shouldDiscardAKeyThatCannotBeSaved()
    {
        keychain->addStatus = KeychainStatus::notAvailable;
        verifyRefused(configure(), QStringLiteral("Failed to save the encryption key to Keychain"));
        QCOMPARE(keychain->item(store, account), std::nullopt);
    }

    void shouldLeaveTheLocationUnsetWithoutADefaultOne()
    {
        const ResultEntity made = factory(RealmConfiguration {}).makeConfiguration(store, 1, {}, {});
        QVERIFY(made.result);
        QCOMPARE(made.dataAs<RealmConfiguration>()->fileURL, std::nullopt);
    }

    void shouldNameEachStoreAndItsKeyItem()
    {
        const RealmEncryptedConfigurationFactory made = factory();
        const auto fileOf = [](const ResultEntity& result, auto database) {
            return result.dataAs<decltype(database)>()->configuration.fileURL.value_or(QString());
        };
        QCOMPARE(fileOf(ProjectsDatabase::make(made), ProjectsDatabase {}), u"/data/Tasks.Projects.realm");
        QCOMPARE(fileOf(TaskListsDatabase::make(made), TaskListsDatabase {}), u"/data/Tasks.TaskList.realm");
        QCOMPARE(fileOf(TasksDatabase::make(made), TasksDatabase {}), u"/data/Tasks.Tasks.realm");
        QCOMPARE(fileOf(DailyTasksDatabase::make(made), DailyTasksDatabase {}), u"/data/Tasks.DailyTask.realm");
        QCOMPARE(fileOf(BitacoraDatabase::make(made), BitacoraDatabase {}), u"/data/Tasks.Bitacora.realm");
        QCOMPARE(fileOf(CalendarProviderDatabase::make(made), CalendarProviderDatabase {}),
            u"/data/CalendarProviders.RegistryProvider.realm");

        for (const QString& name : {"Tasks.Projects", "Tasks.TaskList", "Tasks.Tasks", "Tasks.DailyTask",
                 "Tasks.Bitacora", "CalendarProviders.RegistryProvider"})
            QVERIFY2(keychain->item(name, account).has_value(), qPrintable(name));
    }

    void shouldPassTheKeyFailureOnFromADatabaseType()
    {
        keychain->lookupStatus = KeychainStatus::notAvailable;
        const ResultEntity made = ProjectsDatabase::make(factory());
        verifyRefused(made,
            QStringLiteral("Keychain lookup failed with status -25291; refusing to regenerate the "
                           "encryption key"));
    }
};

TOLVANE_TEST_MAIN(StoreConfigurationTest)
#include "StoreConfigurationTest.moc"
