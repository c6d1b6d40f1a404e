#include "ContentView.h"
#include "MainWindow.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "screens/projects/ProjectsView.h"
#include "screens/projects/TasksDetailPaneView.h"
#include "screens/schedule/DailyEventsView.h"
#include "screens/schedule/MeetDetailView.h"
#include "screens/search/SearchPopupView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"

#include <QLineEdit>
#include <QListWidget>

// Search in a Google account: what it finds lives on the real server (and its events), read
// through the same applications as the workspaces.
class SearchGoogleModeTest : public QObject {
    Q_OBJECT

    QStringList resultsOf(const SearchPopupView* popup)
    {
        QStringList rows;
        for (int i = 0; i < popup->results()->count(); ++i) {
            if (popup->results()->item(i)->data(SearchPopupView::itemRole).isValid())
                rows.append(popup->results()->item(i)->text());
        }
        return rows;
    }

private Q_SLOTS:
    void findsWhatTheServerHoldsAndOpensIt()
    {
        GoogleAccountFixture google;
        QVERIFY(google.signIn().result);
        const TasksApplicationFactory::Applications apps
            = *google.app().services().tasksApplications(true).dataAs<TasksApplicationFactory::Applications>();
        const QUuid user = google.backendUser();
        const ResultEntity madeProject = apps.projects.create({.prjUserId = user, .prjName = QStringLiteral("Remoto")});
        QVERIFY(madeProject.dataAs<ProjectEntity>());
        const QUuid project = madeProject.dataAs<ProjectEntity>()->prjId;
        const ResultEntity madeList = apps.taskLists.create({.prjId = project, .talName = QStringLiteral("Ideas")});
        QVERIFY(madeList.dataAs<TaskListEntity>());
        const ResultEntity madeTask = apps.tasks.create({.prjId = project,
            .talId = madeList.dataAs<TaskListEntity>()->talId,
            .tasTitle = QStringLiteral("Canción para Ñandú")});
        QVERIFY(madeTask.dataAs<TaskEntity>());
        QVERIFY(apps.bitacora
                    .create({.bteUserId = user,
                        .prjId = project,
                        .bteDate = QDateTime(QDate::currentDate().addDays(-3), QTime(12, 0)),
                        .bteContent = QStringLiteral("Ensayé la canción del ñandú")})
                    .result);
        const QDate day = QDate::currentDate().addDays(4);
        QVERIFY(apps.dailyTasks
                    .create({.dtaUserId = user,
                        .dtaDate = QDateTime(day, QTime(12, 0)),
                        .dtaTitle = QStringLiteral("Grabar canción")})
                    .result);
        const QDateTime start(day, QTime(10, 0));
        RemoteEventRepositoryImpl(google.server().client(google.backendSubject()))
            .createMeet({QStringLiteral("Concierto de canciones"), QString(), start, start.addSecs(3600)});

        MainWindow window(google.app().services());
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_K, Qt::ControlModifier);
        SearchPopupView* popup = window.searchPopup();
        QVERIFY(popup && popup->isVisible());
        QTest::keyClicks(popup->line(), QStringLiteral("CANCION"));
        QTRY_COMPARE_WITH_TIMEOUT(resultsOf(popup),
            QStringList(
                {"Canción para Ñandú", "Grabar canción", "Ensayé la canción del ñandú", "Concierto de canciones"}),
            45000);
        QTest::keyClick(popup->line(), Qt::Key_Return);
        auto* projects = qobject_cast<ProjectsView*>(window.contentView()->screen(SidebarItemEnum::projects));
        QVERIFY(projects);
        QTRY_COMPARE_WITH_TIMEOUT(
            projects->detailPane()->highlightedTaskId(), madeTask.dataAs<TaskEntity>()->tasId, 15000);

        // A backend event opens on its day in the schedule.
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_K, Qt::ControlModifier);
        QVERIFY(popup->isVisible());
        QTest::keyClicks(popup->line(), QStringLiteral("concierto"));
        QTRY_COMPARE_WITH_TIMEOUT(resultsOf(popup), QStringList({"Concierto de canciones"}), 45000);
        QTest::keyClick(popup->line(), Qt::Key_Return);
        auto* schedule = qobject_cast<DailyEventsView*>(window.contentView()->screen(SidebarItemEnum::schedule));
        QVERIFY(schedule);
        QTRY_VERIFY_WITH_TIMEOUT(schedule->meetDetail() != nullptr, 30000);
        QCOMPARE(schedule->meetDetail()->meet().metName, QStringLiteral("Concierto de canciones"));
        QCOMPARE(schedule->selectedDate(), day);
    }
};

TOLVANE_GUI_TEST_MAIN(SearchGoogleModeTest)
#include "SearchGoogleModeTest.moc"
