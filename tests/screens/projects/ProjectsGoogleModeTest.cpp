#include "ContentView.h"
#include "MainWindow.h"
#include "oauth/GIDSessionStore.h"
#include "oauth/GIDSignIn.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/ProjectsView.h"
#include "screens/settings/UserProfileChipView.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/http/AccountsBackend.h"
#include "support/http/TasksBackend.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/identity/ScriptedBrowser.h"
#include "support/ui/AppFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QMutex>
#include <QPushButton>

#include <stdexcept>

namespace {

const QString clientID = QStringLiteral("tolvane-desktop-ui-test");

} // namespace

// A new user signs in with Google (the local identity provider and the fake backend on
// loopback) and works in the projects workspace, whose data then lives on the backend.
class ProjectsGoogleModeTest : public QObject {
    Q_OBJECT

    std::shared_ptr<SettableClock> clock = std::make_shared<SettableClock>(QDateTime::currentDateTimeUtc());
    std::shared_ptr<SecretServiceKeychain> keychain = std::make_shared<SecretServiceKeychain>();
    std::unique_ptr<LocalIdentityProvider> provider;
    std::unique_ptr<FakeBackend> backend;
    std::unique_ptr<AccountsBackend> accounts;
    std::unique_ptr<TasksBackend> tasks;
    std::shared_ptr<ScriptedBrowser> browser;
    std::unique_ptr<GIDSignIn> client;
    std::unique_ptr<AppFixture> app;
    std::unique_ptr<MainWindow> window;
    // The backend's id of the signed-in account, set when the provider issues its token.
    QUuid backendUser;
    QMutex backendUserMutex;

    template <typename T = QWidget> T* waitFor(const QString& objectName)
    {
        T* found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = window->findChild<T*>(objectName)) != nullptr; }, 15000))
            throw std::runtime_error("nothing named " + objectName.toStdString() + " showed up");
        return found;
    }

    void addInline(const QString& rowName, const QString& text)
    {
        auto* row = waitFor<InlineAddRowView>(QStringLiteral("inlineAdd:") + rowName);
        if (!row->isEditing())
            row->findChild<QPushButton*>()->click();
        auto* field = row->findChild<QLineEdit*>();
        QTest::qWaitFor([field] { return field->isEnabled(); }, 15000);
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }

private Q_SLOTS:
    void init()
    {
        keychain->remove(GIDSessionStore::service, clientID);
        provider = std::make_unique<LocalIdentityProvider>(clientID, QString(), clock);
        backend = std::make_unique<FakeBackend>();
        accounts = std::make_unique<AccountsBackend>(*backend);
        tasks = std::make_unique<TasksBackend>(*backend);
        provider->onIdTokenIssued([this, backend = backend.get()](const QString& token, const QString& subject) {
            const QUuid user = QUuid::createUuidV5(QUuid(), subject);
            backend->acceptToken(token, user);
            const QMutexLocker locker(&backendUserMutex);
            backendUser = user;
        });
        browser = std::make_shared<ScriptedBrowser>();
        client = std::make_unique<GIDSignIn>(
            GIDSignInServices {keychain, std::make_shared<SystemSecureRandom>(), clock, browser, UrlSession::shared(),
                GIDEndpoints {provider->authorizationEndpoint(), provider->tokenEndpoint()}});
        client->setConfiguration(GIDConfiguration(clientID));
        app = std::make_unique<AppFixture>(client.get(), backend->baseURL());
    }

    void cleanup()
    {
        window.reset();
        browser->waitUntilDone();
        app.reset();
    }

    void shouldSignInWithGoogleAndKeepProjectsOnTheBackend()
    {
        window = std::make_unique<MainWindow>(app->services());
        window->show();
        window->contentView()->select(SidebarItemEnum::projects);
        QTRY_COMPARE_WITH_TIMEOUT(
            waitFor<QLabel>(QStringLiteral("sidebarState"))->text(), u"schedule-login-required-state", 15000);

        waitFor<UserProfileChipView>(QStringLiteral("profileChip"))->signInWithGoogle();
        QTRY_VERIFY_WITH_TIMEOUT(app->services().loginApplication().getCurrentUser().result, 15000);
        QVERIFY(app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrIsGoogleAccount);
        QTRY_COMPARE_WITH_TIMEOUT(
            waitFor<QLabel>(QStringLiteral("sidebarState"))->text(), u"projects-empty-state", 15000);

        addInline(QStringLiteral("projects-add-button"), QStringLiteral("Remote garden"));
        waitFor(QStringLiteral("project:Remote garden"));
        addInline(QStringLiteral("task-lists-add-button"), QStringLiteral("Seeds"));
        waitFor(QStringLiteral("list:Seeds"));

        const QUuid user = [this] {
            const QMutexLocker locker(&backendUserMutex);
            return backendUser;
        }();
        QCOMPARE(tasks->records(TasksBackend::Resource::projects, user).size(), 1);
        QCOMPARE(tasks->records(TasksBackend::Resource::projects, user).constFirst().value(u"prjName").toString(),
            u"Remote garden");
        QCOMPARE(tasks->records(TasksBackend::Resource::taskLists, user).size(), 1);
        for (const RecordedRequest& request : backend->requests()) {
            if (request.path.startsWith(u"/v0/projects") || request.path.startsWith(u"/v0/task-lists"))
                QCOMPARE(request.header("Authorization"), "Bearer " + provider->lastIdToken().toUtf8());
        }
    }
};

TOLVANE_GUI_TEST_MAIN(ProjectsGoogleModeTest)
#include "ProjectsGoogleModeTest.moc"
