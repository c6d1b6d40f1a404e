// Pictures of the real window for the README: the projects workspace with some data, as a list
// and as the matrix, a busy day in the schedule, the logbook of two days and the settings.
// Usage: tolvane_screenshots OUTPUT_DIR LANGUAGE(en|es) APPEARANCE(light|dark)
#include "ContentView.h"
#include "MainWindow.h"
#include "TolvaneApp.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/bitacora/BitacoraView.h"
#include "screens/common/Appearance.h"
#include "screens/projects/ProjectsView.h"
#include "screens/schedule/DailyEventsView.h"
#include "screens/settings/UserSettingsView.h"
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

// A calendar of the desktop's store with a busy today: overlapping meetings and an all-day one.
void seedCalendar(bool spanish)
{
    const QString calendar
        = QStringLiteral("tolvane-screenshots-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    CalendarStore::shared().addLocalCalendar(
        calendar, spanish ? QStringLiteral("Trabajo") : QStringLiteral("Work"), QStringLiteral("#3E8BFF"));
    const QDate today = QDate::currentDate();
    const auto at = [&](int hour, int minute) {
        return QDateTime(today, QTime(hour, minute)).toUTC().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    };
    const auto event = [&](const QString& uid, const QString& title, const QString& start, const QString& end) {
        return QStringLiteral(
            "BEGIN:VEVENT\r\nUID:%1\r\nDTSTAMP:%2\r\nDTSTART%3\r\nDTEND%4\r\nSUMMARY:%5\r\nEND:VEVENT\r\n")
            .arg(uid, at(8, 0), start, end, title);
    };
    QString ics = QStringLiteral("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tolvane//Screenshots//EN\r\n");
    ics += event(QStringLiteral("standup"), spanish ? QStringLiteral("Reunión diaria") : QStringLiteral("Standup"),
        QLatin1Char(':') + at(9, 0), QLatin1Char(':') + at(9, 30));
    ics += event(QStringLiteral("review"),
        spanish ? QStringLiteral("Revisión de diseño") : QStringLiteral("Design review"), QLatin1Char(':') + at(9, 15),
        QLatin1Char(':') + at(10, 45));
    ics += event(QStringLiteral("lunch"),
        spanish ? QStringLiteral("Almuerzo con Ana") : QStringLiteral("Lunch with Ana"), QLatin1Char(':') + at(13, 0),
        QLatin1Char(':') + at(14, 0));
    ics += event(QStringLiteral("planning"),
        spanish ? QStringLiteral("Planificación") : QStringLiteral("Sprint planning"), QLatin1Char(':') + at(16, 0),
        QLatin1Char(':') + at(17, 30));
    ics += event(QStringLiteral("release"),
        spanish ? QStringLiteral("Día de lanzamiento") : QStringLiteral("Release day"),
        QStringLiteral(";VALUE=DATE:") + today.toString(QStringLiteral("yyyyMMdd")),
        QStringLiteral(";VALUE=DATE:") + today.addDays(1).toString(QStringLiteral("yyyyMMdd")));
    ics += QStringLiteral("END:VCALENDAR\r\n");
    CalendarStore::shared().importCalendarData(calendar, ics.toUtf8());
}

void seedLogbook(AppFixture& app, bool spanish)
{
    const auto apps = take<TasksApplicationFactory::Applications>(app.services().tasksApplications(false));
    const QUuid user = QUuid::fromString(take<UserEntity>(app.services().loginApplication().getCurrentUser()).usrId);
    const QDateTime now = QDateTime::currentDateTime();
    const ResultEntity listed = apps.projects.list(user);
    for (const ProjectEntity& project : *listed.dataAs<QList<ProjectEntity>>()) {
        if (project.prjName.startsWith(u"Casa") || project.prjName.startsWith(u"Home"))
            continue;
        const bool launch = project.prjName.startsWith(u"La");
        const QString yesterday = launch
            ? (spanish ? QStringLiteral("• Reproducido el fallo al sincronizar\n• Plan de pruebas listo")
                       : QStringLiteral("• Reproduced the sync crash\n• Test plan ready"))
            : (spanish ? QStringLiteral("• Leídos dos artículos") : QStringLiteral("• Read two papers"));
        const QString today = launch
            ? (spanish ? QStringLiteral("• Corregido el fallo\n• Notas de versión a medias")
                       : QStringLiteral("• Crash fixed\n• Release notes half written"))
            : (spanish ? QStringLiteral("• Esquema del capítulo 2") : QStringLiteral("• Outline of chapter 2"));
        take<BitacoraEntryEntity>(apps.bitacora.saveText(project.prjId, now.addDays(-1),
            QStringLiteral("%1:\n\n").arg(now.addDays(-1).date().day()) + yesterday, user));
        take<BitacoraEntryEntity>(
            apps.bitacora.saveText(project.prjId, now, QStringLiteral("%1:\n\n").arg(now.date().day()) + today, user));
    }
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
    // The smallest window Tolvane allows: names elide, nothing needs scrolling sideways.
    window.resize(window.minimumSize());
    settle();
    window.grab().save(name.arg(QStringLiteral("smallest")));
    window.resize(1280, 800);
    settle();
    window.findChild<QToolButton*>(QStringLiteral("viewModeMatrix"))->click();
    settle();
    window.grab().save(name.arg(QStringLiteral("matrix")));

    seedCalendar(spanish);
    seedLogbook(app, spanish);
    const QString shot = QStringLiteral("%1/%2-%3-%4.png")
                             .arg(QString::fromLocal8Bit(argv[1]), QStringLiteral("%1"), QString::fromLatin1(argv[2]),
                                 QString::fromLatin1(argv[3]));
    window.contentView()->select(SidebarItemEnum::schedule);
    settle(2500);
    window.grab().save(shot.arg(QStringLiteral("schedule")));

    window.contentView()->select(SidebarItemEnum::bitacora);
    settle(1500);
    window.grab().save(shot.arg(QStringLiteral("bitacora-today")));
    if (auto* logbook = qobject_cast<BitacoraView*>(window.contentView()->screen(SidebarItemEnum::bitacora))) {
        logbook->setSelectedDate(QDateTime::currentDateTime().addDays(-1));
        settle(1500);
        window.grab().save(shot.arg(QStringLiteral("bitacora-yesterday")));
    }

    app.notificationCenter().post(NotificationName::showUserSettings);
    settle(1500);
    for (QWidget* top : QApplication::topLevelWidgets()) {
        auto* settings = qobject_cast<UserSettingsView*>(top);
        if (!settings || !settings->isVisible())
            continue;
        const std::array names = {QStringLiteral("account"), QStringLiteral("hours"), QStringLiteral("accounts"),
            QStringLiteral("calendars"), QStringLiteral("alarm"), QStringLiteral("help"), QStringLiteral("data")};
        static_assert(names.size() == UserSettingsSection::allCases.size(), "a picture name for every section");
        for (std::size_t index = 0; index < names.size(); ++index) {
            settings->selectSection(UserSettingsSection::allCases.at(index));
            settle(800);
            settings->grab().save(shot.arg(QStringLiteral("settings-") + names.at(index)));
        }
    }
    return 0;
}
