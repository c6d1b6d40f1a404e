#include "screens/settings/UserSettingsView.h"

#include "calendar_providers/stores/AlarmEnabledCalendarsStore.h"
#include "calendar_providers/stores/HiddenCalendarsStore.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"
#include "platform/BuildSettings.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/common/Appearance.h"
#include "screens/settings/AccountSettingsView.h"
#include "screens/settings/AlarmSettingsView.h"
#include "screens/settings/CalendarProvidersView.h"
#include "screens/settings/CalendarVisibilitySettingsView.h"
#include "screens/settings/HelpSettingsView.h"
#include "screens/settings/UserProfileChipView.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"
#include "support/ui/ModalAnswers.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTimer>
#include <QUuid>

using ModalAnswers::clickButtonNamed;
using ModalAnswers::whenModalAppears;

namespace {

} // namespace

// Receives the URLs the settings hand to the desktop, as the mail client would.
class UrlCatcher : public QObject {
    Q_OBJECT

public:
    QList<QUrl> urls;

public Q_SLOTS:
    void open(const QUrl& url) { urls.append(url); }
};

// The settings window driven through its widgets, over real stores, the session's keyring and
// its calendar store.
class UserSettingsViewTest : public QObject {
    Q_OBJECT

    std::unique_ptr<AppFixture> app;
    std::unique_ptr<UserSettingsView> view;
    QStringList calendarsMade;
    UrlCatcher mail;

    UserSettingsView* open(UserSettingsSectionEnum section)
    {
        RealmConfiguration storeDefaults;
        storeDefaults.fileURL = app->directory() + QStringLiteral("/default.realm");
        view = std::make_unique<UserSettingsView>(app->services(), CalendarSettingsServices {storeDefaults},
            [](QWidget* parent) { return new QLabel(QStringLiteral("console"), parent); });
        view->selectSection(section);
        view->show();
        return view.get();
    }

    template <typename T> T* find(const QString& name)
    {
        T* found = view->findChild<T*>(name);
        if (!found)
            qFatal("nothing named %s", qPrintable(name));
        return found;
    }

    QString addCalendar(const QString& title, const QDateTime& start, const QString& meetName)
    {
        const QString identifier = QStringLiteral("tolvane-test-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
        CalendarStore::shared().addLocalCalendar(identifier, title, QStringLiteral("#33AA55"));
        calendarsMade.append(identifier);
        const QByteArray stamp = start.toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'").toLatin1();
        const QByteArray end = start.addSecs(3600).toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'").toLatin1();
        CalendarStore::shared().importCalendarData(identifier,
            "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tolvane tests//EN\r\nBEGIN:VEVENT\r\nUID:"
                + QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1()
                + "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART:" + stamp + "\r\nDTEND:" + end
                + "\r\nSUMMARY:" + meetName.toUtf8() + "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
        return identifier;
    }

    QList<MeetEntity> scheduleMeets(const QString& named)
    {
        QList<MeetEntity> found;
        const auto meets
            = EventKitMeetRepositoryImpl::live(HiddenCalendarsStore::standard(app->notificationCenter()).load())
                  ->fetchMeets();
        for (const MeetEntity& meet : meets) {
            if (meet.metName == named)
                found.append(meet);
        }
        return found;
    }

private Q_SLOTS:
    void initTestCase()
    {
        CalendarStore::shared();
        QDesktopServices::setUrlHandler(QStringLiteral("mailto"), &mail, "open");
    }

    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(QStringLiteral("mailto")); }

    void init()
    {
        app = std::make_unique<AppFixture>();
        app->userDefaults().setValue(ErrorConsoleStore::isEnabledKey, true);
    }

    void cleanup()
    {
        view.reset();
        for (const QString& identifier : std::as_const(calendarsMade))
            CalendarStore::shared().disableCalendar(identifier);
        calendarsMade.clear();
        HiddenCalendarsStore::standard(app->notificationCenter()).save({});
        app.reset();
        mail.urls.clear();
    }

    void shouldSetUpRenameAndDeleteALocalAccount()
    {
        open(UserSettingsSectionEnum::myAccount);
        QSignalSpy changed(&app->notificationCenter(), &NotificationCenter::posted);
        auto* account = find<AccountSettingsView>(QStringLiteral("accountSettings"));
        QTRY_VERIFY(!account->isLoading());
        find<QPushButton>(QStringLiteral("user-settings-setup-local-button"))->click();
        QTest::keyClicks(find<QLineEdit>(QStringLiteral("setupFirstName")), QStringLiteral("Grace"));
        QTest::keyClicks(find<QLineEdit>(QStringLiteral("setupLastName")), QStringLiteral("Hopper"));
        find<QPushButton>(QStringLiteral("createLocalAccount"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(account->hasExistingUser(), 10000);
        QCOMPARE(changed.first().at(0).toString(), NotificationName::userAccountDidChange);
        QCOMPARE(account->user()->usrFirstName, u"Grace");
        QVERIFY(!account->user()->usrIsGoogleAccount);

        // A blank first name is refused, shown and recorded; the stored user stays as it was.
        find<QLineEdit>(QStringLiteral("firstName"))->setText(QStringLiteral("  "));
        find<QPushButton>(QStringLiteral("user-settings-save-button"))->click();
        auto* error = find<QLabel>(QStringLiteral("accountError"));
        QTRY_VERIFY_WITH_TIMEOUT(error->isVisible(), 10000);
        QCOMPARE(error->text(), u"The first name cannot be empty");
        QVERIFY(app->console().consoleText().endsWith(
            u"UserSettingsController.save failed: The first name cannot be empty"));
        find<QLineEdit>(QStringLiteral("firstName"))->setText(QStringLiteral("Amazing Grace"));
        find<QPushButton>(QStringLiteral("user-settings-save-button"))->click();
        QTRY_COMPARE_WITH_TIMEOUT(account->user()->usrFirstName, u"Amazing Grace", 10000);
        QCOMPARE(
            app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrFirstName, u"Amazing Grace");

        // Cancelling keeps the account; confirming forgets it.
        whenModalAppears(
            [](QWidget* box) { clickButtonNamed(box, QStringLiteral("user-settings-logout-cancel-button")); });
        find<QPushButton>(QStringLiteral("user-settings-delete-local-account-button"))->click();
        QVERIFY(app->services().loginApplication().getCurrentUser().result);
        whenModalAppears([](QWidget* box) {
            clickButtonNamed(box, QStringLiteral("user-settings-delete-local-account-confirm-button"));
        });
        find<QPushButton>(QStringLiteral("user-settings-delete-local-account-button"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(!account->hasExistingUser(), 10000);
        QVERIFY(!app->services().loginApplication().getCurrentUser().result);
    }

    void shouldShowARenameInTheChipAtOnceAndCheckTheAddress()
    {
        app->storeLocalUser();
        UserProfileChipView chip(app->services());
        chip.show();
        auto* name = chip.findChild<QLabel*>(QStringLiteral("profileName"));
        QTRY_COMPARE_WITH_TIMEOUT(name->text(), u"Ada Lovelace", 10000);
        open(UserSettingsSectionEnum::myAccount);
        auto* account = find<AccountSettingsView>(QStringLiteral("accountSettings"));
        QTRY_VERIFY_WITH_TIMEOUT(account->hasExistingUser(), 10000);

        find<QLineEdit>(QStringLiteral("firstName"))->setText(QStringLiteral("Augusta Ada"));
        find<QPushButton>(QStringLiteral("user-settings-save-button"))->click();
        QTRY_COMPARE_WITH_TIMEOUT(name->text(), u"Augusta Ada Lovelace", 10000);

        // A local account's address can be changed, and is checked first.
        auto* email = find<QLineEdit>(QStringLiteral("email"));
        QVERIFY(!email->isReadOnly());
        email->setText(QStringLiteral("ada@"));
        find<QPushButton>(QStringLiteral("user-settings-save-button"))->click();
        auto* error = find<QLabel>(QStringLiteral("accountError"));
        QTRY_VERIFY(error->isVisible());
        QCOMPARE(error->text(), u"user-settings-email-invalid-text");
        email->setText(QStringLiteral(" ada@home.example "));
        find<QPushButton>(QStringLiteral("user-settings-save-button"))->click();
        QTRY_COMPARE_WITH_TIMEOUT(account->user()->usrEmail, u"ada@home.example", 10000);
        QCOMPARE(
            app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrEmail, u"ada@home.example");
        QVERIFY(!error->isVisible());
    }

    void shouldSwitchBetweenLightAndDarkFromTheSettings()
    {
        QVERIFY(qEnvironmentVariableIsEmpty("TOLVANE_APPEARANCE"));
        Appearance appearance;
        appearance.apply();
        appearance.followChoice(app->userDefaults(), app->notificationCenter());
        const bool desktopPrefersDark = appearance.isDark();
        open(UserSettingsSectionEnum::schedule);
        auto* mode = find<QComboBox>(QStringLiteral("appearanceMode"));
        QCOMPARE(mode->currentData().toInt(), int(Appearance::Mode::system));

        QTest::keyClick(mode, Qt::Key_End);
        QTRY_VERIFY(appearance.isDark());
        QVERIFY(QApplication::palette().color(QPalette::Window).lightness() < 128);
        // The next run starts dark too.
        Appearance nextRun;
        nextRun.followChoice(app->userDefaults(), app->notificationCenter());
        QVERIFY(nextRun.isDark());

        QTest::keyClick(mode, Qt::Key_Up);
        QTRY_VERIFY(!appearance.isDark());
        QVERIFY(QApplication::palette().color(QPalette::Window).lightness() > 128);

        QTest::keyClick(mode, Qt::Key_Home);
        QTRY_COMPARE(appearance.isDark(), desktopPrefersDark);
        QCOMPARE(app->userDefaults().value(Appearance::modeKey).toString(), u"system");
    }

    void shouldKeepTheScheduleHoursInOrderAcrossRestarts()
    {
        open(UserSettingsSectionEnum::schedule);
        QCOMPARE(view->startHour(), 5);
        QCOMPARE(view->endHour(), 21);
        find<QSpinBox>(QStringLiteral("startHour"))->setValue(22);
        QCOMPARE(view->endHour(), 23);
        find<QSpinBox>(QStringLiteral("endHour"))->setValue(3);
        QCOMPARE(view->startHour(), 2);
        open(UserSettingsSectionEnum::schedule);
        QCOMPARE(app->userDefaults().value(UserSettingsView::startHourKey).toInt(), 2);
        QCOMPARE(view->startHour(), 2);
        QCOMPARE(view->endHour(), 3);
    }

    void shouldRegisterTheDeviceAccountWithItsNumberedDefaults()
    {
        const QDateTime now = QDateTime::currentDateTime();
        QCOMPARE(CalendarProvidersView::defaultDeviceAccount(0, now).capDisplayName, u"Cuenta iOS calendar");
        QCOMPARE(CalendarProvidersView::defaultDeviceAccount(0, now).capEmail, u"eventKit@calendars.tolvane.invalid");
        QCOMPARE(CalendarProvidersView::defaultDeviceAccount(1, now).capDisplayName, u"Cuenta iOS calendar 2");
        QCOMPARE(CalendarProvidersView::defaultDeviceAccount(1, now).capEmail, u"eventKit2@calendars.tolvane.invalid");

        open(UserSettingsSectionEnum::accounts);
        auto* providers = find<CalendarProvidersView>(QStringLiteral("calendarProviders"));
        QTRY_VERIFY_WITH_TIMEOUT(!providers->isLoading(), 10000);
        QVERIFY(!providers->isAccessDenied());
        QVERIFY(find<QLabel>(QStringLiteral("accountsEmpty"))->isVisible());
        QSignalSpy posted(&app->notificationCenter(), &NotificationCenter::posted);
        whenModalAppears([](QWidget* picker) {
            clickButtonNamed(picker, QStringLiteral("accounts-provider-picker-continue-button"));
        });
        providers->addAccount();
        QTRY_COMPARE_WITH_TIMEOUT(providers->providers().size(), 1, 10000);
        QCOMPARE(providers->providers().first().capDisplayName, u"Cuenta iOS calendar");
        QCOMPARE(providers->providers().first().capEmail, u"eventKit@calendars.tolvane.invalid");
        QVERIFY(providers->providers().first().capIsEnabled);
        QCOMPARE(posted.first().at(0).toString(), NotificationName::calendarAccountsDidChange);

        // The calendar store takes one account: a second one is refused with the registry's reason.
        whenModalAppears([](QWidget* picker) {
            clickButtonNamed(picker, QStringLiteral("accounts-provider-picker-continue-button"));
        });
        providers->addAccount();
        auto* error = find<QLabel>(QStringLiteral("accountsError"));
        QTRY_VERIFY_WITH_TIMEOUT(error->isVisible(), 10000);
        QCOMPARE(error->text(), u"A provider of type eventKit is already registered");

        // Switching it off, then removing it after the confirmation.
        QTest::mouseClick(find<QListWidget>(QStringLiteral("accountsList"))->viewport(), Qt::LeftButton, {},
            find<QListWidget>(QStringLiteral("accountsList"))
                ->visualItemRect(find<QListWidget>(QStringLiteral("accountsList"))->item(0))
                .center());
        find<QCheckBox>(QStringLiteral("accountEnabled"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(
            !providers->providers().isEmpty() && !providers->providers().first().capIsEnabled, 10000);
        whenModalAppears([](QWidget* box) { clickButtonNamed(box, QStringLiteral("accounts-delete-confirm-button")); });
        find<QPushButton>(QStringLiteral("accounts-delete-button"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(providers->providers().isEmpty(), 10000);
    }

    void shouldHideCalendarsFromTheScheduleAndChooseWhichOnesRing()
    {
        const QDateTime start = QDateTime(QDate::currentDate().addDays(1), QTime(10, 0));
        const QString work = addCalendar(QStringLiteral("Work"), start, QStringLiteral("Standup"));
        open(UserSettingsSectionEnum::calendars);
        auto* calendars = find<CalendarVisibilitySettingsView>(QStringLiteral("calendarVisibility"));
        QTRY_VERIFY_WITH_TIMEOUT(view->findChild<QCheckBox*>(QStringLiteral("activate:") + work), 10000);
        QCOMPARE(scheduleMeets(QStringLiteral("Standup")).size(), 1);
        const MeetEntity standup = scheduleMeets(QStringLiteral("Standup")).first();
        const MeetAlarmScheduler alarms = app->services().meetAlarmScheduler();
        QVERIFY(!alarms.canHaveAlarm(standup));

        QSignalSpy posted(&app->notificationCenter(), &NotificationCenter::posted);
        find<QCheckBox>(QStringLiteral("alarm:") + work)->click();
        QVERIFY(alarms.canHaveAlarm(standup));
        QCOMPARE(posted.last().at(0).toString(), NotificationName::alarmScheduleDidChange);

        find<QCheckBox>(QStringLiteral("activate:") + work)->click();
        QCOMPARE(posted.last().at(0).toString(), NotificationName::hiddenCalendarsDidChange);
        QVERIFY(calendars->hiddenIdentifiers().contains(work));
        QVERIFY(scheduleMeets(QStringLiteral("Standup")).isEmpty());

        find<QCheckBox>(QStringLiteral("alarm:") + work)->click();
        QVERIFY(!alarms.canHaveAlarm(standup));
        QVERIFY(!AlarmEnabledCalendarsStore(app->userDefaults()).load().contains(work));
    }

    void shouldKeepAnInvalidTemplateInTheFieldWithItsError()
    {
        open(UserSettingsSectionEnum::alarm);
        auto* alarm = find<AlarmSettingsView>(QStringLiteral("alarmSettings"));
        auto* field = find<QLineEdit>(QStringLiteral("alarmMessageTemplate"));
        field->setText(QStringLiteral("Time for {event}"));
        alarm->saveTemplate();
        QVERIFY(!alarm->alarmMessageError());
        field->setText(QStringLiteral("Time for the meet"));
        alarm->saveTemplate();
        QCOMPARE(alarm->alarmMessageError(), qtTrId("meet-alarm-message-error"));
        QVERIFY(find<QLabel>(QStringLiteral("alarmMessageError"))->isVisible());
        QCOMPARE(field->text(), u"Time for the meet");
        QCOMPARE(app->services().alarmMessageApplication().loadTemplateText(), u"Time for {event}");
    }

    void shouldOfferTheMailClientWhenTheMessageCannotBeSent()
    {
        // A build with a support address but no backend.
        qputenv("TOLVANE_SUPPORT_EMAIL", "ayuda@tolvane.test");
        const auto unset = qScopeGuard([] { qunsetenv("TOLVANE_SUPPORT_EMAIL"); });
        open(UserSettingsSectionEnum::help);
        auto* help = find<HelpSettingsView>(QStringLiteral("helpSettings"));
        QVERIFY(!find<QPushButton>(QStringLiteral("user-settings-help-send-button"))->isEnabled());
        QTest::keyClicks(find<QPlainTextEdit>(QStringLiteral("helpMessage")), QStringLiteral("No veo mis tareas & ya"));
        QSignalSpy handled(help, &HelpSettingsView::helpMessageHandled);
        QVERIFY(find<QPushButton>(QStringLiteral("user-settings-help-send-button"))->isEnabled());
        find<QPushButton>(QStringLiteral("user-settings-help-send-button"))->click();
        // With no backend the send can fail before the click returns: wait for the outcome, whenever
        // it came, rather than for a signal that may already be behind us.
        QTRY_COMPARE_WITH_TIMEOUT(handled.size(), 1, 30000);
        QCOMPARE(handled.first().at(0).toBool(), false);
        QVERIFY(!help->isSendingHelpMessage());
        QCOMPARE(mail.urls.size(), 1);
        QCOMPARE(mail.urls.first().toEncoded(),
            "mailto:" + QUrl::toPercentEncoding(BuildSettings::supportEmail(), "@")
                + "?body=Hola%20estoy%20usando%20Tolvane%20y%20necesito%20ayuda:%0ANo%20veo%20mis%20tareas%20&%20ya%"
                  "0A");
        QCOMPARE(help->helpMessage(), u"No veo mis tareas & ya");
        QVERIFY(
            app->console().consoleText().endsWith(u"SupportController.sendMessage failed: No backend is configured"));
    }

    void shouldShowTheProjectVersionBesideTheHelpForm()
    {
        open(UserSettingsSectionEnum::help);
        QCOMPARE(
            find<QLabel>(QStringLiteral("helpVersion"))->text(), QStringLiteral("Tolvane " TOLVANE_PROJECT_VERSION));
    }

    void shouldExplainThatNothingCanBeSentWithoutABackendOrAnAddress()
    {
        qunsetenv("TOLVANE_SUPPORT_EMAIL");
        if (!BuildSettings::supportEmail().isEmpty())
            QSKIP("this build has a support address of its own");
        open(UserSettingsSectionEnum::help);
        QTest::keyClicks(find<QPlainTextEdit>(QStringLiteral("helpMessage")), QStringLiteral("No veo mis tareas"));
        auto* send = find<QPushButton>(QStringLiteral("user-settings-help-send-button"));
        QVERIFY(!send->isEnabled());
        QTest::mouseClick(send, Qt::LeftButton);
        QVERIFY(mail.urls.isEmpty());
        auto* notice = find<QLabel>(QStringLiteral("helpNotice"));
        QVERIFY(notice->isVisible());
        QCOMPARE(notice->text(), qtTrId("user-settings-help-unavailable-text"));
        QCOMPARE(find<QPlainTextEdit>(QStringLiteral("helpMessage"))->toPlainText(), u"No veo mis tareas");
    }
};

TOLVANE_GUI_TEST_MAIN(UserSettingsViewTest)
#include "UserSettingsViewTest.moc"
