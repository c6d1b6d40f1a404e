#include "screens/bitacora/BitacoraController.h"

#include "screens/common/ErrorConsoleStore.h"

#include <QtConcurrent/QtConcurrentRun>

BitacoraController::BitacoraController(ProjectsApplication projectsApplication, BitacoraApplication bitacoraApplication,
    QUuid userId, ErrorConsoleStore& console, QObject* parent)
    : QObject(parent)
    , projectsApplication(std::move(projectsApplication))
    , bitacoraApplication(std::move(bitacoraApplication))
    , userId(userId)
    , m_console(console)
{
    m_queue.setMaxThreadCount(1);
}

BitacoraController::~BitacoraController()
{
    m_queue.waitForDone();
}

template <typename Work>
void BitacoraController::run(
    const QString& action, QObject* context, Work&& work, std::function<void(const ResultEntity&)> done)
{
    ErrorConsoleStore* console = &m_console;
    const QString name = QStringLiteral("BitacoraController.") + action;
    QtConcurrent::run(&m_queue, std::forward<Work>(work))
        .then(context, [console, name, done = std::move(done)](const ResultEntity& result) {
            if (!result.result)
                console->appendLine(name + QStringLiteral(" failed: ") + result.firstMessage().value_or(QString()));
            done(result);
        });
}

void BitacoraController::load(const QDateTime& date, QObject* context, std::function<void(const ResultEntity&)> done)
{
    run(
        QStringLiteral("load"), context,
        [projects = projectsApplication, bitacora = bitacoraApplication, user = userId, date]() -> ResultEntity {
            const ResultEntity listed = projects.list(user);
            if (!listed.result)
                return listed;
            BitacoraDayEntity day;
            if (const auto* items = listed.dataAs<QList<ProjectEntity>>())
                day.projects = *items;
            QList<QUuid> ids;
            for (const ProjectEntity& project : std::as_const(day.projects))
                ids.append(project.prjId);
            const ResultEntity entries = bitacora.entriesOn(date, ids);
            if (!entries.result)
                return entries;
            day.entries = *entries.dataAs<QHash<QUuid, BitacoraEntryEntity>>();
            return ResultEntity::success(day);
        },
        std::move(done));
}

void BitacoraController::save(const QUuid& projectId, const QDateTime& date, const QString& text, QObject* context,
    std::function<void(const ResultEntity&)> done)
{
    run(
        QStringLiteral("save"), context,
        [bitacora = bitacoraApplication, user = userId, projectId, date, text] {
            return ResultEntity(bitacora.saveText(projectId, date, text, user));
        },
        std::move(done));
}

void BitacoraController::delete_(const QUuid& entryId, QObject* context, std::function<void(const ResultEntity&)> done)
{
    run(
        QStringLiteral("delete"), context,
        [bitacora = bitacoraApplication, user = userId, entryId] {
            return ResultEntity(bitacora.delete_(entryId, user));
        },
        std::move(done));
}

ResultEntity BitacoraController::saveNow(const QUuid& projectId, const QDateTime& date, const QString& text)
{
    m_queue.waitForDone();
    const ResultEntity result = bitacoraApplication.saveText(projectId, date, text, userId);
    if (!result.result)
        m_console.appendLine(
            QStringLiteral("BitacoraController.save failed: ") + result.firstMessage().value_or(QString()));
    return result;
}
