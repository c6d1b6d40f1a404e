#include "ContentView.h"
#include "MainWindow.h"
#include "screens/settings/UserProfileChipView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"
#include "support/ui/WindowSteps.h"
#include "wire/tasks/ProjectResponseDTO.h"
#include "wire/tasks/TaskListResponseDTO.h"

#include <QLabel>

// A new user signs in with Google (the local identity provider and the real server on loopback)
// and works in the projects workspace, whose data then lives on the server.
class ProjectsGoogleModeTest : public QObject {
    Q_OBJECT

    std::unique_ptr<GoogleAccountFixture> google;
    std::unique_ptr<MainWindow> window;
    WindowSteps steps {window, 15000};

private Q_SLOTS:
    void init() { google = std::make_unique<GoogleAccountFixture>(); }

    void cleanup()
    {
        window.reset();
        google.reset();
    }

    void shouldSignInWithGoogleAndKeepProjectsOnTheBackend()
    {
        steps.show(google->app().services())->contentView()->select(SidebarItemEnum::projects);
        QTRY_COMPARE_WITH_TIMEOUT(
            steps.waitFor<QLabel>(QStringLiteral("sidebarState"))->text(), u"schedule-login-required-state", 15000);

        steps.waitFor<UserProfileChipView>(QStringLiteral("profileChip"))->signInWithGoogle();
        QTRY_VERIFY_WITH_TIMEOUT(google->app().services().loginApplication().getCurrentUser().result, 15000);
        QVERIFY(google->app().services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrIsGoogleAccount);
        QTRY_COMPARE_WITH_TIMEOUT(
            steps.waitFor<QLabel>(QStringLiteral("sidebarState"))->text(), u"projects-empty-state", 15000);

        steps.addInline(QStringLiteral("projects-add-button"), QStringLiteral("Remote garden"));
        steps.waitFor(QStringLiteral("project:Remote garden"));
        steps.addInline(QStringLiteral("task-lists-add-button"), QStringLiteral("Seeds"));
        steps.waitFor(QStringLiteral("list:Seeds"));

        // What the server holds for the signed-in user, read back as that user.
        const QUuid user = google->backendUser();
        const APIClient asUser = google->server().client(google->backendSubject());
        const auto projects = asUser.get<QList<ProjectResponseDTO>>(QStringLiteral("/v0/projects"));
        QCOMPARE(projects.size(), 1);
        QCOMPARE(projects.constFirst().prjName, u"Remote garden");
        QCOMPARE(QUuid::fromString(projects.constFirst().prjUserId), user);
        const auto lists = asUser.get<QList<TaskListResponseDTO>>(
            QStringLiteral("/v0/task-lists"), {{QStringLiteral("projectId"), projects.constFirst().prjId}});
        QCOMPARE(lists.size(), 1);
        QCOMPARE(lists.constFirst().talName, u"Seeds");
    }
};

TOLVANE_GUI_TEST_MAIN(ProjectsGoogleModeTest)
#include "ProjectsGoogleModeTest.moc"
