#include "calendar_providers/applications/CalendarProviderRegistryApplication.h"
#include "calendar_providers/repositories/EventKitPermissionRepositoryImpl.h"
#include "calendar_providers/repositories/LiveEventStoreAuthorizing.h"
#include "platform/calendar_store/CalendarStore.h"
#include "support/TestMain.h"

#include <QTemporaryDir>

// Calendar access asked of the desktop's real calendar store. The same executable runs twice:
// inside the desktop session, where EDS is started on demand by the session bus, and with a bus
// address that leads nowhere (CALENDAR_ACCESS_EXPECTED=denied).
class CalendarAccessTest : public QObject {
    Q_OBJECT

    bool expectDenied() const { return qgetenv("CALENDAR_ACCESS_EXPECTED") == "denied"; }

private Q_SLOTS:
    void shouldAnswerForTheSessionsCalendarStore()
    {
        // Built on the test's main thread, whose Qt event loop runs the GLib main context.
        CalendarStore store;
        if (expectDenied()) {
            QCOMPARE(store.authorizationStatus(), 2);
            QVERIFY(!store.requestFullAccessToEvents());
            QVERIFY(!store.connectionError().isEmpty());
        } else {
            QVERIFY2(store.connectionError().isEmpty(), qPrintable(store.connectionError()));
            QCOMPARE(store.authorizationStatus(), 3);
            QVERIFY(store.requestFullAccessToEvents());
        }
    }

    void shouldGrantOrDenyThroughTheApplication()
    {
        CalendarStore& store = CalendarStore::shared();
        QTemporaryDir directory;
        auto permissions
            = std::make_shared<EventKitPermissionRepositoryImpl>(std::make_shared<LiveEventStoreAuthorizing>(store));
        const CalendarProviderRegistryApplication application(
            nullptr, permissions, EnabledCalendarAccountsStore(directory.path()));

        const CalendarProvidersResultEntity outcome = application.requestAccess(AccountProviderEnum::eventKit);

        if (expectDenied()) {
            QVERIFY(!outcome.result);
            QCOMPARE(outcome.infrastructureMessage, QStringLiteral("Calendar access was denied"));
            QCOMPARE(outcome.firstMessage(), QStringLiteral("Calendar access was denied"));
        } else {
            QVERIFY2(outcome.result, qPrintable(outcome.firstMessage().value_or(QString())));
            QCOMPARE(outcome.firstMessage(), std::nullopt);
        }
    }
};

TOLVANE_TEST_MAIN(CalendarAccessTest)
#include "CalendarAccessTest.moc"
