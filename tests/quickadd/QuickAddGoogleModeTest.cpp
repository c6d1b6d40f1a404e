#include "MainWindow.h"
#include "screens/projects/ProjectsView.h"
#include "screens/quickadd/QuickAddView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"
#include "support/ui/WindowSteps.h"

#include <QLineEdit>
#include <QWidget>

#include <stdexcept>

// Ctrl+N for a Google account: the task goes to the real server (on loopback, over PostgreSQL)
// through the same use cases.
class QuickAddGoogleModeTest : public QObject {
    Q_OBJECT

    std::unique_ptr<GoogleAccountFixture> google;
    std::unique_ptr<MainWindow> window;
    WindowSteps steps {window, 15000};

    QuickAddView* pressCtrlN()
    {
        steps.activate();
        QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier);
        QuickAddView* view = nullptr;
        if (!QTest::qWaitFor([&] { return (view = window->findChild<QuickAddView*>()) && view->isReady(); }, 15000))
            throw std::runtime_error("the quick add never read the projects");
        return view;
    }

private Q_SLOTS:
    void init() { google = std::make_unique<GoogleAccountFixture>(); }

    void cleanup()
    {
        window.reset();
        google.reset();
    }

    void shouldFileTheTaskOnTheServer()
    {
        const LoginResultEntity signedIn = google->signIn();
        QVERIFY2(signedIn.result, qPrintable(signedIn.firstMessage().value_or(QString())));
        const auto apps = google->app().signedInTasks().applications;
        const QUuid user = google->backendUser();
        const QUuid gardenId
            = stored<ProjectEntity>(apps.projects.create({.prjUserId = user, .prjName = QStringLiteral("Huerto")}))
                  .prjId;
        QVERIFY(apps.taskLists.create({.prjId = gardenId, .talName = QStringLiteral("Riego"), .talIsDefault = true})
                    .result);
        const auto seeds = stored<TaskListEntity>(
            apps.taskLists.create({.prjId = gardenId, .talName = QStringLiteral("Semillas"), .talIsDefault = false}));

        steps.show(google->app().services());
        QuickAddView* view = pressCtrlN();
        auto* field = view->findChild<QLineEdit*>(QStringLiteral("quickAddField"));
        const QDate before = QDate::currentDate();
        QTest::keyClicks(field, QStringLiteral("Sembrar tomates pasado manana #huerto /semillas !2"));
        QCOMPARE(view->fields().project, QStringLiteral("Huerto"));
        QCOMPARE(view->fields().list, QStringLiteral("Semillas"));
        QTest::keyClick(field, Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(window->findChild<QuickAddView*>() == nullptr, 15000);
        const QDate after = QDate::currentDate();

        const QList<TaskEntity> stored = ::stored<QList<TaskEntity>>(apps.tasks.list(seeds.talId));
        QCOMPARE(stored.size(), 1);
        QCOMPARE(stored.constFirst().tasTitle, QStringLiteral("Sembrar tomates"));
        QVERIFY(stored.constFirst().dueDay() == before.addDays(2) || stored.constFirst().dueDay() == after.addDays(2));
        QCOMPARE(stored.constFirst().tasEisenhowerTag, EisenhowerTagEnum::planning);

        // With the list open in the workspace, a line that names no place goes there.
        ProjectsView* projects = steps.openProjects(google->app().services());
        steps.openList(QStringLiteral("Semillas"));
        QCOMPARE(projects->openListId(), seeds.talId);
        view = pressCtrlN();
        QTest::keyClicks(view->findChild<QLineEdit*>(QStringLiteral("quickAddField")), QStringLiteral("Comprar abono"));
        QTest::keyClick(view->findChild<QLineEdit*>(QStringLiteral("quickAddField")), Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(window->findChild<QuickAddView*>() == nullptr, 15000);
        QStringList titles;
        for (const TaskEntity& task : ::stored<QList<TaskEntity>>(apps.tasks.list(seeds.talId)))
            titles.append(task.tasTitle);
        titles.sort();
        QCOMPARE(titles, QStringList({"Comprar abono", "Sembrar tomates"}));
        steps.waitFor(QStringLiteral("task:Comprar abono"));
    }
};

TOLVANE_GUI_TEST_MAIN(QuickAddGoogleModeTest)
#include "QuickAddGoogleModeTest.moc"
