#include "screens/settings/HelpSettingsView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"

#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

// The help form of a signed-in Google user: the message reaches the backend and nothing falls
// back to the mail client.
class HelpGoogleModeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldSendTheTrimmedMessageToTheBackend()
    {
        GoogleAccountFixture google;
        const LoginResultEntity signedIn = google.signIn();
        QVERIFY2(signedIn.result, qPrintable(signedIn.firstMessage().value_or(QString())));

        // The view takes the console widget over.
        HelpSettingsView help(google.app().services(), new QLabel);
        help.show();
        QTest::keyClicks(
            help.findChild<QPlainTextEdit*>(QStringLiteral("helpMessage")), QStringLiteral("  My tasks are gone  "));
        QSignalSpy handled(&help, &HelpSettingsView::helpMessageHandled);
        // The "sent" alert is modal; close it once it shows.
        QTimer closer;
        QObject::connect(&closer, &QTimer::timeout, [] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                box->accept();
        });
        closer.start(20);
        help.findChild<QPushButton*>(QStringLiteral("user-settings-help-send-button"))->click();

        QTRY_COMPARE_WITH_TIMEOUT(handled.size(), 1, 30000);
        QCOMPARE(handled.constFirst().constFirst().toBool(), true);
        QCOMPARE(help.helpMessage(), QString());
        QCOMPARE(
            google.server().supportMessages(google.backendUser()), QStringList {QStringLiteral("My tasks are gone")});
    }
};

TOLVANE_GUI_TEST_MAIN(HelpGoogleModeTest)
#include "HelpGoogleModeTest.moc"
