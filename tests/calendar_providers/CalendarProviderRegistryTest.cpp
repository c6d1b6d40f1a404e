#include "ProviderBuilder.h"
#include "calendar_providers/applications/CalendarProviderRegistryApplication.h"
#include "calendar_providers/domain/CalendarProviderDomain.h"
#include "calendar_providers/repositories/EventKitPermissionRepositoryImpl.h"
#include "support/TestMain.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

const QString blankId = QStringLiteral("The provider id cannot be empty");
const QString blankEmail = QStringLiteral("The provider email cannot be empty");
const QString duplicateKind = QStringLiteral("A provider of type eventKit is already registered");
const QString denied = QStringLiteral("Calendar access was denied");

// Keeps the providers in a list, with the registry's own answers for taken and unknown ids, and
// counts the writes so a test can see that a refused request stored nothing.
class InMemoryRegistryRepository final : public CalendarProviderRegistryRepository {
public:
    QList<CalendarProviderEntity> providers;
    int writes = 0;
    // When set, every list answers this failure.
    std::optional<CalendarProvidersResultEntity> listFailure;

    CalendarProvidersResultEntity listProviders() override
    {
        return listFailure ? *listFailure : CalendarProvidersResultEntity::success(providers);
    }
    CalendarProvidersResultEntity findProvider(const QString& capId) override
    {
        const qsizetype index = indexOf(capId);
        return index < 0 ? notFound() : CalendarProvidersResultEntity::success(providers.at(index));
    }
    CalendarProvidersResultEntity registerProvider(const CalendarProviderEntity& provider) override
    {
        ++writes;
        if (indexOf(provider.capId) >= 0)
            return CalendarProvidersResultEntity::applicationFailure(
                QStringLiteral("A provider is already registered with that id"));
        providers.append(provider);
        return CalendarProvidersResultEntity::success(provider);
    }
    CalendarProvidersResultEntity updateProvider(const CalendarProviderEntity& provider) override
    {
        ++writes;
        const qsizetype index = indexOf(provider.capId);
        if (index < 0)
            return notFound();
        providers[index] = provider;
        return CalendarProvidersResultEntity::success(provider);
    }
    CalendarProvidersResultEntity removeProvider(const QString& capId) override
    {
        ++writes;
        const qsizetype index = indexOf(capId);
        if (index < 0)
            return notFound();
        providers.removeAt(index);
        return CalendarProvidersResultEntity::success();
    }

private:
    qsizetype indexOf(const QString& capId) const
    {
        for (qsizetype i = 0; i < providers.size(); ++i) {
            if (providers.at(i).capId == capId)
                return i;
        }
        return -1;
    }
    static CalendarProvidersResultEntity notFound()
    {
        return CalendarProvidersResultEntity::applicationFailure(
            QStringLiteral("No provider is registered with that id"));
    }
};

class FakeEventStore final : public EventStoreAuthorizing {
public:
    int status = 0;
    bool grants = false;
    int requests = 0;

    int authorizationStatus() const override { return status; }
    bool requestFullAccessToEvents() override
    {
        ++requests;
        return grants;
    }
};

class UnusedPermissionRepository final : public CalendarPermissionRepository {
public:
    CalendarProvidersResultEntity requestAccess(AccountProviderEnum) override { qFatal("no access request expected"); }
};

void verifyFailedInDomain(const CalendarProvidersResultEntity& outcome, const QString& text)
{
    QVERIFY(!outcome.result);
    QCOMPARE(outcome.domainMessage, std::optional<QString>(text));
    QCOMPARE(outcome.firstMessage(), std::optional<QString>(text));
    QVERIFY(!outcome.data.has_value());
}

QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

} // namespace

class CalendarProviderRegistryTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_directory;
    std::shared_ptr<InMemoryRegistryRepository> m_repository;
    std::optional<CalendarProviderRegistryApplication> m_application;

    QString enabledKindsFile() const { return m_directory.filePath(QStringLiteral("enabledCalendarAccounts.json")); }
    CalendarProviderRegistryApplication& application() { return *m_application; }

private Q_SLOTS:
    void init()
    {
        QFile::remove(enabledKindsFile());
        m_repository = std::make_shared<InMemoryRegistryRepository>();
        m_application.emplace(m_repository, std::make_shared<UnusedPermissionRepository>(),
            EnabledCalendarAccountsStore(m_directory.path()));
    }

    void shouldRefuseABlankIdOrEmail_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("message");
        const QString email = QStringLiteral("me@example.org");
        QTest::newRow("empty id") << QString() << email << blankId;
        QTest::newRow("id of spaces") << QStringLiteral("   ") << email << blankId;
        QTest::newRow("id of line breaks and no-break spaces")
            << QStringLiteral("\n\u00A0\r\n\u2028") << email << blankId;
        QTest::newRow("email of spaces") << QStringLiteral("work") << QStringLiteral("  \t ") << blankEmail;
        QTest::newRow("both blank: the id speaks first") << QStringLiteral(" ") << QStringLiteral(" ") << blankId;
    }

    void shouldRefuseABlankIdOrEmail()
    {
        QFETCH(QString, id);
        QFETCH(QString, email);
        QFETCH(QString, message);
        const CalendarProviderEntity provider = aProvider().withId(id).withEmail(email);

        verifyFailedInDomain(CalendarProviderDomain::validate(provider), message);
        verifyFailedInDomain(application().registerProvider(provider), message);
        verifyFailedInDomain(application().updateProvider(provider), message);
        QCOMPARE(m_repository->writes, 0);
        QVERIFY(!QFile::exists(enabledKindsFile()));
    }

    void shouldAcceptTextAroundBlanks()
    {
        const CalendarProvidersResultEntity outcome = CalendarProviderDomain::validate(
            aProvider().withId(QStringLiteral(" a ")).withEmail(QStringLiteral("\tx@y\n")));
        QVERIFY(outcome.result);
        QCOMPARE(outcome.firstMessage(), std::nullopt);
    }

    void shouldRefuseASecondCalendarStoreAccountEvenUnderAnotherId()
    {
        QVERIFY(application().registerProvider(aProvider().withId(QStringLiteral("first")).disabled()).result);

        const CalendarProvidersResultEntity second = application().registerProvider(
            aProvider().withId(QStringLiteral("second")).withEmail(QStringLiteral("other@example.org")));

        verifyFailedInDomain(second, duplicateKind);
        QCOMPARE(m_repository->providers.size(), 1);
        QCOMPARE(m_repository->providers.constFirst().capId, QStringLiteral("first"));
        QCOMPARE(m_repository->writes, 1);
    }

    void shouldKeepTheEnabledKindsInStepWithEveryChange()
    {
        const CalendarProviderEntity account = aProvider().withId(QStringLiteral("work"));

        const CalendarProvidersResultEntity registered = application().registerProvider(account);
        QVERIFY(registered.result);
        QCOMPARE(*registered.dataAs<CalendarProviderEntity>(), account);
        QCOMPARE(fileBytes(enabledKindsFile()), QByteArray(R"(["eventKit"])"));

        CalendarProviderEntity switchedOff = account;
        switchedOff.capIsEnabled = false;
        QVERIFY(application().updateProvider(switchedOff).result);
        QCOMPARE(fileBytes(enabledKindsFile()), QByteArray("[]"));

        QVERIFY(application().updateProvider(account).result);
        QCOMPARE(fileBytes(enabledKindsFile()), QByteArray(R"(["eventKit"])"));

        QVERIFY(application().removeProvider(account.capId).result);
        QCOMPARE(fileBytes(enabledKindsFile()), QByteArray("[]"));
        QVERIFY(m_repository->providers.isEmpty());
    }

    void shouldRepairTheEnabledKindsWhenListing()
    {
        m_repository->providers = {aProvider().withId(QStringLiteral("work"))};
        QFile stale(enabledKindsFile());
        QVERIFY(stale.open(QIODevice::WriteOnly));
        stale.write("{ this is not what the registry wrote");
        stale.close();

        const CalendarProvidersResultEntity listed = application().listProviders();

        QVERIFY(listed.result);
        QCOMPARE(*listed.dataAs<QList<CalendarProviderEntity>>(), m_repository->providers);
        QCOMPARE(fileBytes(enabledKindsFile()), QByteArray(R"(["eventKit"])"));
    }

    void shouldPassRepositoryFailuresOnAndLeaveTheFileAlone()
    {
        QVERIFY(application().registerProvider(aProvider()).result);
        m_repository->listFailure
            = CalendarProvidersResultEntity::databaseFailure(QStringLiteral("Failed to open the database"));

        const CalendarProvidersResultEntity listed = application().listProviders();
        QVERIFY(!listed.result);
        QCOMPARE(listed.databaseMessage, QStringLiteral("Failed to open the database"));
        // Registration cannot check the kinds it cannot see.
        const CalendarProvidersResultEntity registered
            = application().registerProvider(aProvider().withId(QStringLiteral("another")));
        QCOMPARE(registered.databaseMessage, QStringLiteral("Failed to open the database"));
        QCOMPARE(m_repository->writes, 1);

        const CalendarProvidersResultEntity missing = application().removeProvider(QStringLiteral("nobody"));
        QVERIFY(!missing.result);
        QCOMPARE(missing.applicationMessage, QStringLiteral("No provider is registered with that id"));
        QCOMPARE(fileBytes(enabledKindsFile()), QByteArray(R"(["eventKit"])"));
    }

    void shouldGrantOrDenyAccessByTheStoresStatus_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("grants");
        QTest::addColumn<bool>("succeeds");
        QTest::addColumn<int>("requests");
        QTest::newRow("full access: nobody is asked") << 3 << false << true << 0;
        QTest::newRow("not determined, granted") << 0 << true << true << 1;
        QTest::newRow("not determined, refused") << 0 << false << false << 1;
        QTest::newRow("restricted") << 1 << true << false << 0;
        QTest::newRow("denied") << 2 << true << false << 0;
        QTest::newRow("write only") << 4 << true << false << 0;
    }

    void shouldGrantOrDenyAccessByTheStoresStatus()
    {
        QFETCH(int, status);
        QFETCH(bool, grants);
        QFETCH(bool, succeeds);
        QFETCH(int, requests);
        auto store = std::make_shared<FakeEventStore>();
        store->status = status;
        store->grants = grants;
        const CalendarProviderRegistryApplication withAccess(m_repository,
            std::make_shared<EventKitPermissionRepositoryImpl>(store),
            EnabledCalendarAccountsStore(m_directory.path()));

        const CalendarProvidersResultEntity outcome = withAccess.requestAccess(AccountProviderEnum::eventKit);

        QCOMPARE(outcome.result, succeeds);
        QCOMPARE(outcome.firstMessage(), succeeds ? std::nullopt : std::optional<QString>(denied));
        QCOMPARE(store->requests, requests);
    }
};

TOLVANE_TEST_MAIN(CalendarProviderRegistryTest)
#include "CalendarProviderRegistryTest.moc"
