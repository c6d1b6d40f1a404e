#include "MainWindow.h"
#include "screens/quickadd/QuickAddView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"

#include <QLineEdit>
#include <QWidget>

#include <stdexcept>

// Ctrl+N for a Google account: the task goes to the real server (on loopback, over PostgreSQL)
// through the same use cases.
class QuickAddGoogleModeTest : public QObject {
    Q_OBJECT

    std::unique_ptr<GoogleAccountFixture> google;
    std::unique_ptr<MainWindow> window;

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
        const auto apps
            = *google->app().services().tasksApplications(true).dataAs<TasksApplicationFactory::Applications>();
        const TaskResultEntity garden
            = apps.projects.create({.prjUserId = google->backendUser(), .prjName = QStringLiteral("Huerto")});
        QVERIFY(garden.result);
        const QUuid gardenId = garden.dataAs<ProjectEntity>()->prjId;
        QVERIFY(apps.taskLists.create({.prjId = gardenId, .talName = QStringLiteral("Riego"), .talIsDefault = true})
                    .result);
        const TaskResultEntity seeds
            = apps.taskLists.create({.prjId = gardenId, .talName = QStringLiteral("Semillas"), .talIsDefault = false});
        QVERIFY(seeds.result);

        window = std::make_unique<MainWindow>(google->app().services());
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier);
        QuickAddView* view = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((view = window->findChild<QuickAddView*>()) && view->isReady(), 15000);
        auto* field = view->findChild<QLineEdit*>(QStringLiteral("quickAddField"));
        const QDate before = QDate::currentDate();
        QTest::keyClicks(field, QStringLiteral("Sembrar tomates pasado manana #huerto /semillas !2"));
        QCOMPARE(view->fields().project, QStringLiteral("Huerto"));
        QCOMPARE(view->fields().list, QStringLiteral("Semillas"));
        QTest::keyClick(field, Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(window->findChild<QuickAddView*>() == nullptr, 15000);
        const QDate after = QDate::currentDate();

        const TaskResultEntity listed = apps.tasks.list(seeds.dataAs<TaskListEntity>()->talId);
        QVERIFY(listed.result);
        const QList<TaskEntity> stored = *listed.dataAs<QList<TaskEntity>>();
        QCOMPARE(stored.size(), 1);
        QCOMPARE(stored.constFirst().tasTitle, QStringLiteral("Sembrar tomates"));
        QVERIFY(stored.constFirst().dueDay() == before.addDays(2) || stored.constFirst().dueDay() == after.addDays(2));
        QCOMPARE(stored.constFirst().tasEisenhowerTag, EisenhowerTagEnum::planning);
    }
};

TOLVANE_GUI_TEST_MAIN(QuickAddGoogleModeTest)
#include "QuickAddGoogleModeTest.moc"
