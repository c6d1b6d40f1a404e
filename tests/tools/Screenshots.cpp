// Pictures of the real window for the README: the projects workspace with some data, as a list
// and as the matrix. Usage: tolvane_screenshots OUTPUT_DIR LANGUAGE(en|es) APPEARANCE(light|dark)
#include "ContentView.h"
#include "MainWindow.h"
#include "TolvaneApp.h"
#include "screens/common/Appearance.h"
#include "screens/projects/ProjectsView.h"
#include "support/ui/AppFixture.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QTest>
#include <QToolButton>

namespace {

template <typename T> T take(const ResultEntity& result)
{
    if (!result.result)
        qFatal("%s", qPrintable(result.firstMessage().value_or(QString())));
    return *result.dataAs<T>();
}

void seed(AppFixture& app, bool spanish)
{
    const auto apps = take<TasksApplicationFactory::Applications>(app.services().tasksApplications(false));
    const QUuid user = QUuid::fromString(take<UserEntity>(app.services().loginApplication().getCurrentUser()).usrId);
    const auto project = [&](const QString& name) {
        return take<ProjectEntity>(apps.projects.create({.prjUserId = user, .prjName = name}));
    };
    const auto list = [&](const ProjectEntity& owner, const QString& name, bool isDefault) {
        return take<TaskListEntity>(
            apps.taskLists.create({.prjId = owner.prjId, .talName = name, .talIsDefault = isDefault}));
    };
    const auto task
        = [&](const TaskListEntity& in, const QString& title, std::optional<EisenhowerTagEnum> tag, bool done = false) {
              const TaskEntity made
                  = take<TaskEntity>(apps.tasks.create({.prjId = in.prjId, .talId = in.talId, .tasTitle = title}));
              if (tag)
                  apps.tasks.setTag(made.tasId, tag);
              if (done)
                  apps.tasks.markDone(made.tasId);
          };
    const ProjectEntity work = project(spanish ? QStringLiteral("Lanzamiento 2.0") : QStringLiteral("Launch 2.0"));
    const TaskListEntity release = list(work, spanish ? QStringLiteral("Versión") : QStringLiteral("Release"), true);
    list(work, spanish ? QStringLiteral("Marketing") : QStringLiteral("Marketing"), false);
    task(release, spanish ? QStringLiteral("Corregir el fallo al sincronizar") : QStringLiteral("Fix the sync crash"),
        EisenhowerTagEnum::doIt);
    task(release, spanish ? QStringLiteral("Escribir las notas de versión") : QStringLiteral("Write the release notes"),
        EisenhowerTagEnum::planning);
    task(release, spanish ? QStringLiteral("Pedir traducciones") : QStringLiteral("Order translations"),
        EisenhowerTagEnum::delegate);
    task(release, spanish ? QStringLiteral("Rediseñar el logo otra vez") : QStringLiteral("Redesign the logo again"),
        EisenhowerTagEnum::delete_);
    task(release, spanish ? QStringLiteral("Revisar el instalador") : QStringLiteral("Review the installer"),
        std::nullopt);
    task(release, spanish ? QStringLiteral("Congelar el código") : QStringLiteral("Code freeze"), std::nullopt, true);
    const ProjectEntity home = project(spanish ? QStringLiteral("Casa") : QStringLiteral("Home"));
    list(home, spanish ? QStringLiteral("Tareas") : QStringLiteral("Chores"), true);
    project(spanish ? QStringLiteral("Tesis") : QStringLiteral("Thesis"));
}

void settle(int milliseconds = 600)
{
    QTest::qWait(milliseconds);
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 4)
        qFatal("usage: tolvane_screenshots OUTPUT_DIR en|es light|dark");
    const bool spanish = qstrcmp(argv[2], "es") == 0;
    qputenv("TOLVANE_APPEARANCE", argv[3]);
    QLocale::setDefault(QLocale(spanish ? QLocale::Spanish : QLocale::English));
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    TolvaneApp::installTranslations();
    Appearance appearance;
    appearance.apply();

    AppFixture app;
    app.storeLocalUser(QStringLiteral("Ada"), QStringLiteral("Lovelace"));
    seed(app, spanish);

    MainWindow window(app.services());
    window.resize(1280, 800);
    window.show();
    window.contentView()->select(SidebarItemEnum::projects);
    settle();
    const QString first = spanish ? QStringLiteral("Lanzamiento 2.0") : QStringLiteral("Launch 2.0");
    const QString release = spanish ? QStringLiteral("Versión") : QStringLiteral("Release");
    window.findChild<QWidget*>(QStringLiteral("project:") + first)
        ->findChild<QToolButton*>(QStringLiteral("projectFold"))
        ->click();
    settle();
    QTest::mouseClick(window.findChild<QWidget*>(QStringLiteral("list:") + release), Qt::LeftButton);
    settle();

    const QString name = QStringLiteral("%1/projects-%2-%3-%4.png")
                             .arg(QString::fromLocal8Bit(argv[1]), QString::fromLatin1(argv[2]),
                                 QString::fromLatin1(argv[3]), QStringLiteral("%1"));
    window.grab().save(name.arg(QStringLiteral("list")));
    window.findChild<QToolButton*>(QStringLiteral("viewModeMatrix"))->click();
    settle();
    window.grab().save(name.arg(QStringLiteral("matrix")));
    return 0;
}
