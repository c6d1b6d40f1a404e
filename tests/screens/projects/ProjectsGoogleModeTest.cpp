#include "ContentView.h"
#include "MainWindow.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/ProjectsView.h"
#include "screens/settings/UserProfileChipView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <stdexcept>

// A new user signs in with Google (the local identity provider and the fake backend on
// loopback) and works in the projects workspace, whose data then lives on the backend.
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

        const QUuid user = google->backendUser();
        QCOMPARE(google->tasks().records(TasksBackend::Resource::projects, user).size(), 1);
        QCOMPARE(
            google->tasks().records(TasksBackend::Resource::projects, user).constFirst().value(u"prjName").toString(),
            u"Remote garden");
        QCOMPARE(google->tasks().records(TasksBackend::Resource::taskLists, user).size(), 1);
        for (const RecordedRequest& request : google->backend().requests()) {
            if (request.path.startsWith(u"/v0/projects") || request.path.startsWith(u"/v0/task-lists"))
                QCOMPARE(request.header("Authorization"), "Bearer " + google->provider().lastIdToken().toUtf8());
        }
    }
};

TOLVANE_GUI_TEST_MAIN(ProjectsGoogleModeTest)
#include "ProjectsGoogleModeTest.moc"
