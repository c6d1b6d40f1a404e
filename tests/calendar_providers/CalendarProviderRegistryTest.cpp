#include "ProviderBuilder.h"
#include "calendar_providers/domain/CalendarProviderDomain.h"
#include "calendar_providers/repositories/EventKitPermissionRepositoryImpl.h"
#include "support/TestMain.h"

namespace {

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

} // namespace

class CalendarProviderRegistryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldRefuseABlankIdOrEmail_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("message");
        const QString email = QStringLiteral("me@example.org");
        const QString blankId = QStringLiteral("The provider id cannot be empty");
        const QString blankEmail = QStringLiteral("The provider email cannot be empty");
        QTest::newRow("empty id") << QString() << email << blankId;
        QTest::newRow("id of spaces") << QStringLiteral("   ") << email << blankId;
        QTest::newRow("id of line breaks and no-break spaces")
            << QStringLiteral("\n\u00A0\r\n\u2028") << email << blankId;
        QTest::newRow("email of spaces and a tab") << QStringLiteral("work") << QStringLiteral("  \t ") << blankEmail;
        QTest::newRow("both blank: the id speaks first") << QStringLiteral(" ") << QStringLiteral(" ") << blankId;
        QTest::newRow("text inside blanks passes") << QStringLiteral(" a ") << QStringLiteral("\tx@y\n") << QString();
    }

    void shouldRefuseABlankIdOrEmail()
    {
        QFETCH(QString, id);
        QFETCH(QString, email);
        QFETCH(QString, message);

        const CalendarProvidersResultEntity outcome
            = CalendarProviderDomain::validate(aProvider().withId(id).withEmail(email));

        QCOMPARE(outcome.result, message.isEmpty());
        QCOMPARE(outcome.domainMessage, message.isEmpty() ? std::nullopt : std::optional<QString>(message));
        QCOMPARE(outcome.firstMessage(), outcome.domainMessage);
    }

    void shouldAllowOneAccountOfEachKind()
    {
        const CalendarProviderEntity candidate = aProvider().withId(QStringLiteral("second"));

        QVERIFY(CalendarProviderDomain::canRegister(candidate, {}).result);
        const CalendarProvidersResultEntity refused
            = CalendarProviderDomain::canRegister(candidate, {aProvider().withId(QStringLiteral("first")).disabled()});
        QVERIFY(!refused.result);
        QCOMPARE(refused.domainMessage, QStringLiteral("A provider of type eventKit is already registered"));
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

        const CalendarProvidersResultEntity outcome
            = EventKitPermissionRepositoryImpl(store).requestAccess(AccountProviderEnum::eventKit);

        QCOMPARE(outcome.result, succeeds);
        QCOMPARE(outcome.infrastructureMessage,
            succeeds ? std::nullopt : std::optional<QString>(QStringLiteral("Calendar access was denied")));
        QCOMPARE(outcome.firstMessage(), outcome.infrastructureMessage);
        QCOMPARE(store->requests, requests);
    }
};

TOLVANE_TEST_MAIN(CalendarProviderRegistryTest)
#include "CalendarProviderRegistryTest.moc"
