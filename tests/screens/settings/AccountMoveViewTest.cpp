#include "screens/settings/AccountMoveView.h"

#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"
#include "support/ui/ModalAnswers.h"
#include "tasks/repositories/remote/RemoteTaskRepositoryImpl.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

// A local account's data moved into a Google account through the settings page: the real
// sign-in against the local identity provider, the real tolvane-server, the real local stores.
class AccountMoveViewTest : public QObject {
    Q_OBJECT

    struct LocalData {
        QUuid user;
        ProjectEntity project;
        TaskEntity task;
    };

    // A local account with a project, a list and a task in its stores.
    static LocalData localAccountWithData(GoogleAccountFixture& google)
    {
        google.app().storeLocalUser();
        const UserEntity user = *google.app().services().loginApplication().getCurrentUser().dataAs<UserEntity>();
        const auto apps
            = *google.app().services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        LocalData data;
        data.user = QUuid::fromString(user.usrId);
        data.project = *apps.projects.create({.prjUserId = data.user, .prjName = QStringLiteral("Garden")})
                            .dataAs<ProjectEntity>();
        const auto list = *apps.taskLists.create({.prjId = data.project.prjId, .talName = QStringLiteral("Spring")})
                               .dataAs<TaskListEntity>();
        TaskEntity task;
        task.prjId = data.project.prjId;
        task.talId = list.talId;
        task.tasTitle = QStringLiteral("Sow the beans");
        data.task = *apps.tasks.create(task).dataAs<TaskEntity>();
        return data;
    }

    // Works the offer out once more and waits for it. The view's own first answer may already
    // have come inside its constructor, when the account was read quickly enough.
    static bool offerShown(AccountMoveView& view, AppServices& services)
    {
        QSignalSpy refreshed(&view, &AccountMoveView::refreshed);
        services.notificationCenter().post(NotificationName::userAccountDidChange);
        return !refreshed.isEmpty() || refreshed.wait(30000);
    }

    static QPushButton* moveButton(AccountMoveView& view)
    {
        return view.findChild<QPushButton*>(QStringLiteral("moveAccount"));
    }

private Q_SLOTS:
    void aLocalUserSignsInAndFindsEverythingOnTheGoogleAccount()
    {
        GoogleAccountFixture google;
        const LocalData local = localAccountWithData(google);
        AccountMoveView view(google.app().services());
        QVERIFY(offerShown(view, google.app().services()));
        QVERIFY(!view.isHidden());
        QVERIFY(moveButton(view)->isVisibleTo(&view));

        QSignalSpy finished(&view, &AccountMoveView::moveFinished);
        ModalAnswers::whenModalAppears(
            [](QWidget* box) { ModalAnswers::clickButtonNamed(box, qtTrId("account-move-confirm-button")); });
        moveButton(view)->click();
        QVERIFY(!finished.isEmpty() || finished.wait(60000));
        QVERIFY2(finished.constFirst().at(0).toBool(), qPrintable(finished.constFirst().at(1).toString()));

        // Signed in with Google now, with the task under its own id on the server.
        const auto current = google.app().services().loginApplication().getCurrentUser();
        QVERIFY(current.dataAs<UserEntity>()->usrIsGoogleAccount);
        RemoteTaskRepositoryImpl remote(google.server().client(google.backendSubject()));
        const ResultEntity found = remote.find(local.task.tasId);
        QVERIFY2(found.result, qPrintable(found.firstMessage().value_or(QString())));
        QCOMPARE(found.dataAs<TaskEntity>()->tasTitle, QStringLiteral("Sow the beans"));
        QVERIFY(!google.app().userDefaults().contains(AccountMoveView::pendingMoveKey));
        // This computer keeps its copy.
        const auto localApps
            = *google.app().services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        QVERIFY(localApps.tasks.taskRepository->find(local.task.tasId).result);
        // Nothing more to offer once the account has changed hands, however often the view looks.
        QVERIFY(offerShown(view, google.app().services()));
        QVERIFY(!moveButton(view)->isVisibleTo(&view));
        QVERIFY(!view.isHidden());
    }

    // The program stopped after the sign-in, before the copy was checked: the Google account is
    // offered to finish, and finishing copies the data.
    void aMoveThatStoppedIsFinishedFromTheGoogleAccount()
    {
        GoogleAccountFixture google;
        const LocalData local = localAccountWithData(google);
        google.app().userDefaults().setValue(
            AccountMoveView::pendingMoveKey, local.user.toString(QUuid::WithoutBraces));
        const LoginResultEntity signedIn = google.signIn();
        QVERIFY2(signedIn.result, qPrintable(signedIn.firstMessage().value_or(QString())));

        AccountMoveView view(google.app().services());
        QVERIFY(offerShown(view, google.app().services()));
        QVERIFY(moveButton(view)->isVisibleTo(&view));
        QCOMPARE(moveButton(view)->text(), qtTrId("account-move-finish-button"));

        QSignalSpy finished(&view, &AccountMoveView::moveFinished);
        moveButton(view)->click();
        QVERIFY(!finished.isEmpty() || finished.wait(60000));
        QVERIFY2(finished.constFirst().at(0).toBool(), qPrintable(finished.constFirst().at(1).toString()));
        RemoteTaskRepositoryImpl remote(google.server().client(google.backendSubject()));
        QVERIFY(remote.find(local.task.tasId).result);
        QVERIFY(!google.app().userDefaults().contains(AccountMoveView::pendingMoveKey));
    }

    // A Google user keeps a copy on this computer; a local account set up here afterwards owns it.
    void aCopyKeptFromAGoogleAccountBelongsToTheNextLocalAccount()
    {
        GoogleAccountFixture google;
        const LoginResultEntity signedIn = google.signIn();
        QVERIFY2(signedIn.result, qPrintable(signedIn.firstMessage().value_or(QString())));
        const auto remote
            = *google.app().services().tasksApplications(true).dataAs<TasksApplicationFactory::Applications>();
        const ProjectEntity project
            = *remote.projects.create({.prjUserId = google.backendUser(), .prjName = QStringLiteral("Online")})
                   .dataAs<ProjectEntity>();

        AccountMoveView view(google.app().services());
        QVERIFY(offerShown(view, google.app().services()));
        QCOMPARE(moveButton(view)->text(), qtTrId("account-copy-button"));
        QSignalSpy finished(&view, &AccountMoveView::moveFinished);
        moveButton(view)->click();
        QVERIFY(!finished.isEmpty() || finished.wait(60000));
        QVERIFY2(finished.constFirst().at(0).toBool(), qPrintable(finished.constFirst().at(1).toString()));

        QVERIFY(google.app().services().loginApplication().signOut().result);
        const QString id = AccountMoveView::newLocalUserId(google.app().userDefaults());
        QCOMPARE(AccountMoveView::newLocalUserId(google.app().userDefaults()), id);
        const auto local
            = *google.app().services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const ResultEntity listed = local.projects.list(QUuid::fromString(id));
        QCOMPARE(*listed.dataAs<QList<ProjectEntity>>(),
            (QList<ProjectEntity> {ProjectEntity {project.prjId, QUuid::fromString(id), project.prjName,
                project.prjDescription, project.prjShowEveryDay}}));
    }

    void aLocalUserWithoutGoogleSignInIsNotOffered()
    {
        AppFixture app;
        app.storeLocalUser();
        AccountMoveView view(app.services());
        QVERIFY(offerShown(view, app.services()));
        QVERIFY(view.isHidden());
    }
};

TOLVANE_GUI_TEST_MAIN(AccountMoveViewTest)
#include "AccountMoveViewTest.moc"
