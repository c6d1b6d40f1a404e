#include "ProviderBuilder.h"
#include "calendar_providers/applications/CalendarProviderRegistryApplication.h"
#include "calendar_providers/repositories/LocalRegistryRepositoryImpl.h"
#include "platform/AppPaths.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "storage/RealmDatabase.h"
#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

const QString account = QStringLiteral("RealmEncryptionKey");
const QString storeName = QStringLiteral("CalendarProviders.RegistryProvider");
const QString notFound = QStringLiteral("No provider is registered with that id");

class UnusedPermissionRepository final : public CalendarPermissionRepository {
public:
    CalendarProvidersResultEntity requestAccess(AccountProviderEnum) override { qFatal("no access request expected"); }
};

QList<CalendarProviderEntity> providersOf(const CalendarProvidersResultEntity& listed)
{
    const auto* providers = listed.dataAs<QList<CalendarProviderEntity>>();
    return providers ? *providers : QList<CalendarProviderEntity> {};
}

} // namespace

// The registry as the program keeps it: an encrypted store file in the data directory, its key in
// the session's real keyring.
class LocalRegistryRepositoryTest : public QObject {
    Q_OBJECT

    std::shared_ptr<SecretServiceKeychain> m_keychain = std::make_shared<SecretServiceKeychain>();

    CalendarProviderDatabase database() const
    {
        const RealmEncryptedConfigurationFactory factory(
            m_keychain, std::make_shared<SystemSecureRandom>(), RealmConfiguration::defaultConfiguration());
        const ResultEntity made = CalendarProviderDatabase::make(factory);
        if (!made.result)
            qFatal("no registry store: %s", qPrintable(made.firstMessage().value_or(QString())));
        return *made.dataAs<CalendarProviderDatabase>();
    }

    LocalRegistryRepositoryImpl repository() const { return LocalRegistryRepositoryImpl(database()); }

private Q_SLOTS:
    void init()
    {
        m_keychain->remove(storeName, account);
        for (const QString& file : database().configuration.files())
            QFile::remove(file);
    }

    void shouldKeepEveryFieldInRegistrationOrder()
    {
        const CalendarProviderEntity first
            = aProvider().withId(QStringLiteral("zeta")).named(QStringLiteral("Trabajo"));
        const CalendarProviderEntity second = aProvider()
                                                  .withId(QStringLiteral("alpha"))
                                                  .withEmail(QStringLiteral("ñandú@example.org"))
                                                  .disabled()
                                                  .registeredAt(QDateTime::fromMSecsSinceEpoch(-86'400'001));
        QVERIFY(repository().registerProvider(first).result);
        const CalendarProvidersResultEntity stored = repository().registerProvider(second);

        QCOMPARE(*stored.dataAs<CalendarProviderEntity>(), second);
        QCOMPARE(providersOf(repository().listProviders()), (QList<CalendarProviderEntity> {first, second}));
        const CalendarProvidersResultEntity found = repository().findProvider(QStringLiteral("alpha"));
        QVERIFY(found.result);
        QCOMPARE(*found.dataAs<CalendarProviderEntity>(), second);
        QCOMPARE(found.dataAs<CalendarProviderEntity>()->capRegisteredAt.toMSecsSinceEpoch(), -86'400'001);
    }

    void shouldNeverOverwriteATakenId()
    {
        const CalendarProviderEntity original = aProvider().withId(QStringLiteral("work"));
        QVERIFY(repository().registerProvider(original).result);

        const CalendarProvidersResultEntity again = repository().registerProvider(
            aProvider().withId(QStringLiteral("work")).named(QStringLiteral("Impostor")));

        QVERIFY(!again.result);
        QCOMPARE(again.firstMessage(), QStringLiteral("A provider is already registered with that id"));
        QCOMPARE(again.applicationMessage, QStringLiteral("A provider is already registered with that id"));
        QCOMPARE(providersOf(repository().listProviders()), QList<CalendarProviderEntity> {original});
    }

    void shouldUpdateInPlaceAndRefuseUnknownIds()
    {
        const CalendarProviderEntity first = aProvider().withId(QStringLiteral("one"));
        const CalendarProviderEntity second = aProvider().withId(QStringLiteral("two"));
        QVERIFY(repository().registerProvider(first).result);
        QVERIFY(repository().registerProvider(second).result);
        CalendarProviderEntity renamed = first;
        renamed.capDisplayName = QStringLiteral("Casa");
        renamed.capDescription = QStringLiteral("Calendarios de casa");
        renamed.capEmail = QStringLiteral("casa@example.org");
        renamed.capIsEnabled = false;
        renamed.capRegisteredAt = renamed.capRegisteredAt.addDays(3);

        QCOMPARE(*repository().updateProvider(renamed).dataAs<CalendarProviderEntity>(), renamed);
        QCOMPARE(providersOf(repository().listProviders()), (QList<CalendarProviderEntity> {renamed, second}));

        for (const CalendarProvidersResultEntity& outcome : {repository().findProvider(QStringLiteral("three")),
                 repository().updateProvider(aProvider().withId(QStringLiteral("three"))),
                 repository().removeProvider(QStringLiteral("three"))}) {
            QVERIFY(!outcome.result);
            QCOMPARE(outcome.applicationMessage, notFound);
        }
        QCOMPARE(providersOf(repository().listProviders()).size(), 2);

        QVERIFY(repository().removeProvider(QStringLiteral("one")).result);
        QCOMPARE(providersOf(repository().listProviders()), QList<CalendarProviderEntity> {second});
        QCOMPARE(repository().findProvider(QStringLiteral("one")).applicationMessage, notFound);
    }

    void shouldReadAnUnknownStoredKindAsTheCalendarStore()
    {
        const RealmConfiguration configuration = database().configuration;
        {
            const auto handle = RealmDatabase::open(configuration);
            handle->execute(QStringLiteral("INSERT INTO CalendarProviderRealmModel VALUES (?, ?, ?, ?, ?, ?, ?)"),
                {QStringLiteral("later"), QStringLiteral("exchange"), QStringLiteral("Later"), QString(),
                    QStringLiteral("l@example.org"), 1, 1'700'000'000'123LL});
        }

        const QList<CalendarProviderEntity> providers = providersOf(repository().listProviders());

        QCOMPARE(providers.size(), 1);
        QCOMPARE(providers.constFirst().capProvider, AccountProviderEnum::eventKit);
        QVERIFY(providers.constFirst().capIsEnabled);
        QCOMPARE(providers.constFirst().capRegisteredAt,
            QDateTime::fromMSecsSinceEpoch(1'700'000'000'123LL, QTimeZone::utc()));
    }

    void shouldFailEveryOperationWhenTheStoreCannotBeOpened()
    {
        QTemporaryDir directory;
        CalendarProviderDatabase unreachable = database();
        // A folder that does not exist: the file can neither be opened nor recreated.
        unreachable.configuration.fileURL = directory.filePath(QStringLiteral("gone/CalendarProviders.realm"));
        LocalRegistryRepositoryImpl broken(unreachable);

        for (const CalendarProvidersResultEntity& outcome :
            {broken.listProviders(), broken.findProvider(QStringLiteral("x")), broken.registerProvider(aProvider()),
                broken.updateProvider(aProvider()), broken.removeProvider(QStringLiteral("x"))}) {
            QVERIFY(!outcome.result);
            QCOMPARE(outcome.databaseMessage, QStringLiteral("Failed to open the database"));
            QCOMPARE(outcome.firstMessage(), QStringLiteral("Failed to open the database"));
            QVERIFY(outcome.infrastructureMessage.value_or(QString()).contains(QStringLiteral("recreated the file")));
        }

        // The enabled kinds are only ever written from a registry that could be read.
        const EnabledCalendarAccountsStore enabledKinds(directory.path());
        enabledKinds.save({AccountProviderEnum::eventKit});
        const CalendarProviderRegistryApplication application(
            std::make_shared<LocalRegistryRepositoryImpl>(unreachable), std::make_shared<UnusedPermissionRepository>(),
            enabledKinds);
        QCOMPARE(application.listProviders().databaseMessage, QStringLiteral("Failed to open the database"));
        QCOMPARE(
            application.registerProvider(aProvider()).databaseMessage, QStringLiteral("Failed to open the database"));
        QCOMPARE(enabledKinds.load(), AccountProviderSet {AccountProviderEnum::eventKit});
    }

    void shouldSynchroniseTheEnabledKindsThroughTheRealStore()
    {
        QTemporaryDir container;
        const EnabledCalendarAccountsStore enabledKinds(container.path());
        const CalendarProviderRegistryApplication application(std::make_shared<LocalRegistryRepositoryImpl>(database()),
            std::make_shared<UnusedPermissionRepository>(), enabledKinds);
        const CalendarProviderEntity only = aProvider();

        const CalendarProvidersResultEntity blank
            = application.registerProvider(aProvider().withEmail(QStringLiteral("\n ")));
        QCOMPARE(blank.domainMessage, QStringLiteral("The provider email cannot be empty"));
        QCOMPARE(application.updateProvider(aProvider().withId(QStringLiteral(" "))).domainMessage,
            QStringLiteral("The provider id cannot be empty"));
        QCOMPARE(providersOf(repository().listProviders()), QList<CalendarProviderEntity> {});
        QVERIFY(!QFile::exists(enabledKinds.filePath()));

        QCOMPARE(*application.registerProvider(only).dataAs<CalendarProviderEntity>(), only);
        QCOMPARE(enabledKinds.load(), AccountProviderSet {AccountProviderEnum::eventKit});

        CalendarProviderEntity disabled = only;
        disabled.capIsEnabled = false;
        QVERIFY(application.updateProvider(disabled).result);
        QCOMPARE(enabledKinds.load(), AccountProviderSet());
        QVERIFY(QFile::exists(enabledKinds.filePath()));

        // Someone else's write is undone by the next listing.
        enabledKinds.save({AccountProviderEnum::eventKit});
        QCOMPARE(providersOf(application.listProviders()), QList<CalendarProviderEntity> {disabled});
        QCOMPARE(enabledKinds.load(), AccountProviderSet());

        // A second account of the calendar store is refused even while the first is switched off.
        QCOMPARE(application.registerProvider(aProvider().withId(QStringLiteral("second"))).domainMessage,
            QStringLiteral("A provider of type eventKit is already registered"));
        QCOMPARE(providersOf(application.listProviders()).size(), 1);
        QCOMPARE(application.removeProvider(QStringLiteral("second")).applicationMessage, notFound);
        QVERIFY(application.removeProvider(only.capId).result);
        QCOMPARE(providersOf(application.listProviders()), QList<CalendarProviderEntity> {});
    }
};

TOLVANE_TEST_MAIN(LocalRegistryRepositoryTest)
#include "LocalRegistryRepositoryTest.moc"
