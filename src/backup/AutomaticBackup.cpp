#include "backup/AutomaticBackup.h"

#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>

AutomaticBackup::AutomaticBackup(BackupsProvider backups, QObject* parent)
    : QObject(parent)
    , m_backups(std::move(backups))
{
    m_timer.setInterval(std::chrono::hours(1));
    connect(&m_timer, &QTimer::timeout, this, &AutomaticBackup::check);
}

void AutomaticBackup::start()
{
    m_timer.start();
    check();
}

void AutomaticBackup::check()
{
    if (m_running)
        return;
    m_running = true;
    QtConcurrent::run(QThreadPool::globalInstance(), [backups = m_backups] {
        std::optional<StoreBackups> made = backups();
        return made ? made->backUpIfDue() : ResultEntity::success();
    }).then(this, [this](const ResultEntity& result) {
        m_running = false;
        // Nothing was due.
        if (result.result && !result.data.has_value())
            return;
        Q_EMIT finished(result);
    });
}
