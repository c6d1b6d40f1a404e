#include "ContentView.h"
#include "MainWindow.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/ProjectsView.h"
#include "screens/settings/UserProfileChipView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"
#include "wire/tasks/ProjectResponseDTO.h"
#include "wire/tasks/TaskListResponseDTO.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <stdexcept>

// A new user signs in with Google (the local identity provider and the real server on loopback)
// and works in the projects workspace, whose data then lives on the server.
class ProjectsGoogleModeTest : public QObject {
    Q_OBJECT

    std::unique_ptr<GoogleAccountFixture> google;
    std::unique_ptr<MainWindow> window;

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
    void init() { google = std::make_unique<GoogleAccountFixture>(); }

    void cleanup()
    {
        window.reset();
        google.reset();
    }

    void shouldSignInWithGoogleAndKeepProjectsOnTheBackend()
    {
        window = std::make_unique<MainWindow>(google->app().services());
        window->show();
        window->contentView()->select(SidebarItemEnum::projects);
        QTRY_COMPARE_WITH_TIMEOUT(
            waitFor<QLabel>(QStringLiteral("sidebarState"))->text(), u"schedule-login-required-state", 15000);

        waitFor<UserProfileChipView>(QStringLiteral("profileChip"))->signInWithGoogle();
        QTRY_VERIFY_WITH_TIMEOUT(google->app().services().loginApplication().getCurrentUser().result, 15000);
        QVERIFY(google->app().services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrIsGoogleAccount);
        QTRY_COMPARE_WITH_TIMEOUT(
            waitFor<QLabel>(QStringLiteral("sidebarState"))->text(), u"projects-empty-state", 15000);

        addInline(QStringLiteral("projects-add-button"), QStringLiteral("Remote garden"));
        waitFor(QStringLiteral("project:Remote garden"));
        addInline(QStringLiteral("task-lists-add-button"), QStringLiteral("Seeds"));
        waitFor(QStringLiteral("list:Seeds"));

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
