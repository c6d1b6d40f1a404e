#include "screens/settings/DataSettingsView.h"

#include "screens/settings/CsvMappingDialog.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"
#include "transfer/TasksRepositories.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimeZone>
#include <QTreeWidget>

namespace {

struct Session {
    QUuid userId;
    TasksApplicationFactory::Applications applications;
};

Session sessionOf(AppFixture& app)
{
    const AppServices::TasksSession session = app.services().tasksSession();
    return {
        QUuid::fromString(session.user->usrId), *session.applications.dataAs<TasksApplicationFactory::Applications>()};
}

QStringList projectNames(AppFixture& app)
{
    const Session session = sessionOf(app);
    QStringList names;
    for (const ProjectEntity& project :
        *session.applications.projects.list(session.userId).dataAs<QList<ProjectEntity>>())
        names.append(project.prjName);
    return names;
}

void addProject(AppFixture& app, const QString& name)
{
    const Session session = sessionOf(app);
    ProjectEntity project;
    project.prjUserId = session.userId;
    project.prjName = name;
    QVERIFY(session.applications.projects.create(project).result);
}

// Waits for the page's next piece of work to end; true when it succeeded.
bool finished(QSignalSpy& spy)
{
    if (spy.isEmpty() && !spy.wait(60000))
        return false;
    return spy.takeFirst().at(0).toBool();
}

} // namespace

class DataSettingsViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Back up, change, restore the backup through the page: the data is as it was, and the
    // replaced state is listed as a backup of its own.
    void restoreRoundTripThroughThePage()
    {
        AppFixture app;
        app.storeLocalUser();
        addProject(app, QStringLiteral("Before"));
        DataSettingsView page(app.services());
        auto* list = page.findChild<QTreeWidget*>(QStringLiteral("backupsList"));
        QSignalSpy done(&page, &DataSettingsView::workFinished);

        page.findChild<QPushButton*>(QStringLiteral("backUpNow"))->click();
        QVERIFY(finished(done));
        QTRY_COMPARE(list->topLevelItemCount(), 1);
        // One project and the user's default list... whatever the store holds, counted.
        QVERIFY(list->topLevelItem(0)->text(2).toInt() >= 1);

        addProject(app, QStringLiteral("After"));
        QCOMPARE(projectNames(app), (QStringList {QStringLiteral("Before"), QStringLiteral("After")}));
        list->setCurrentItem(list->topLevelItem(0));
        auto* restore = page.findChild<QPushButton*>(QStringLiteral("restoreBackup"));
        QVERIFY(restore->isEnabled());
        restore->click();
        QMessageBox* question = nullptr;
        QTRY_VERIFY((question = page.findChild<QMessageBox*>(QStringLiteral("restoreConfirmation"))));
        question->findChild<QPushButton*>(QStringLiteral("confirmRestore"))->click();
        QVERIFY(finished(done));
        QCOMPARE(projectNames(app), QStringList {QStringLiteral("Before")});
        QTRY_COMPARE(list->topLevelItemCount(), 2);
    }

    // Cancelling the confirmation restores nothing.
    void cancelledConfirmationRestoresNothing()
    {
        AppFixture app;
        app.storeLocalUser();
        addProject(app, QStringLiteral("Before"));
        DataSettingsView page(app.services());
        auto* list = page.findChild<QTreeWidget*>(QStringLiteral("backupsList"));
        QSignalSpy done(&page, &DataSettingsView::workFinished);
        page.backUpNow();
        QVERIFY(finished(done));
        QTRY_COMPARE(list->topLevelItemCount(), 1);
        addProject(app, QStringLiteral("After"));
        list->setCurrentItem(list->topLevelItem(0));
        page.findChild<QPushButton*>(QStringLiteral("restoreBackup"))->click();
        QMessageBox* question = nullptr;
        QTRY_VERIFY((question = page.findChild<QMessageBox*>(QStringLiteral("restoreConfirmation"))));
        question->button(QMessageBox::Cancel)->click();
        QTRY_VERIFY(!page.findChild<QMessageBox*>(QStringLiteral("restoreConfirmation")));
        QCOMPARE(projectNames(app).size(), 2);
        QVERIFY(done.isEmpty());
    }

    // An export from one account imports into another through the page; importing it again
    // skips everything; a CSV file imports through the mapping dialog.
    void exportAndImportThroughThePage()
    {
        AppFixture from;
        from.storeLocalUser();
        addProject(from, QStringLiteral("Garden"));
        addProject(from, QStringLiteral("Taxes"));
        const QString file = from.directory() + QStringLiteral("/export.json");
        {
            DataSettingsView page(from.services());
            QSignalSpy done(&page, &DataSettingsView::workFinished);
            page.exportTo(DataSettingsView::ExportFormat::json, file);
            QVERIFY(finished(done));
        }
        QVERIFY(QFile::exists(file));

        AppFixture into;
        into.storeLocalUser(QStringLiteral("Grace"), QStringLiteral("Hopper"));
        DataSettingsView page(into.services());
        QSignalSpy done(&page, &DataSettingsView::workFinished);
        page.importJson(file);
        QVERIFY(finished(done));
        QCOMPARE(projectNames(into), (QStringList {QStringLiteral("Garden"), QStringLiteral("Taxes")}));
        page.importJson(file);
        QVERIFY(finished(done));
        QCOMPARE(projectNames(into).size(), 2);

        const Session session = sessionOf(into);
        const ProjectEntity garden
            = session.applications.projects.list(session.userId).dataAs<QList<ProjectEntity>>()->constFirst();
        TaskListEntity list;
        list.prjId = garden.prjId;
        list.talName = QStringLiteral("Beds");
        QVERIFY(session.applications.taskLists.taskListRepository->create(list).result);
        const QString csv = into.directory() + QStringLiteral("/tasks.csv");
        QFile csvFile(csv);
        QVERIFY(csvFile.open(QIODevice::WriteOnly));
        csvFile.write("Thing,State\r\nWater the roses,done\r\nBuy seeds,\r\n");
        csvFile.close();
        page.importCsv(csv);
        CsvMappingDialog* dialog = nullptr;
        QTRY_VERIFY((dialog = page.findChild<CsvMappingDialog*>()));
        auto* title = dialog->findChild<QComboBox*>(QStringLiteral("titleColumn"));
        auto* state = dialog->findChild<QComboBox*>(QStringLiteral("doneColumn"));
        auto* ok = dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        QVERIFY(!ok->isEnabled());
        title->setCurrentIndex(title->findText(QStringLiteral("Thing")));
        state->setCurrentIndex(state->findText(QStringLiteral("State")));
        auto* target = dialog->findChild<QComboBox*>(QStringLiteral("targetList"));
        target->setCurrentIndex(target->findText(QStringLiteral("Garden — Beds")));
        QVERIFY(ok->isEnabled());
        ok->click();
        QVERIFY(finished(done));
        const QList<TaskEntity> tasks = *session.applications.tasks.list(list.talId).dataAs<QList<TaskEntity>>();
        QCOMPARE(tasks.size(), 2);
        QCOMPARE(tasks.at(0).tasTitle, QStringLiteral("Water the roses"));
        QVERIFY(tasks.at(0).tasIsDone);
        QVERIFY(!tasks.at(1).tasIsDone);
    }

    // The meets of the desktop's calendar store leave as an iCalendar file with the zone the
    // program shows times in.
    void meetsExportThroughThePage()
    {
        AppFixture app;
        app.storeLocalUser();
        DataSettingsView page(app.services());
        QSignalSpy done(&page, &DataSettingsView::workFinished);
        const QString file = app.directory() + QStringLiteral("/meets.ics");
        page.exportMeets(file);
        QVERIFY(finished(done));
        QFile ics(file);
        QVERIFY(ics.open(QIODevice::ReadOnly));
        const QByteArray text = ics.readAll();
        QVERIFY(text.startsWith("BEGIN:VCALENDAR"));
        QVERIFY(text.contains("BEGIN:VTIMEZONE"));
        QVERIFY(text.contains(QTimeZone::systemTimeZoneId()));
    }
};

TOLVANE_GUI_TEST_MAIN(DataSettingsViewTest)

#include "DataSettingsViewTest.moc"
