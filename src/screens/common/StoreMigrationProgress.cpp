#include "screens/common/StoreMigrationProgress.h"

#include "platform/NotificationCenter.h"

#include <QProgressDialog>
#include <QWidget>

StoreMigrationProgress::StoreMigrationProgress(
    NotificationCenter& center, QWidget* window, int thresholdMs, QObject* parent)
    : QObject(parent)
    , m_window(window)
    , m_thresholdMs(thresholdMs)
{
    m_delay.setSingleShot(true);
    connect(&m_delay, &QTimer::timeout, this, &StoreMigrationProgress::show);
    center.addObserver(NotificationName::storeMigrationRunning, this, [this](const QVariant& running) {
        if (running.toBool())
            began();
        else
            ended();
    });
}

StoreMigrationProgress::~StoreMigrationProgress()
{
    delete m_dialog;
}

QProgressDialog* StoreMigrationProgress::dialog() const
{
    return m_dialog;
}

void StoreMigrationProgress::began()
{
    if (m_running++ > 0)
        return;
    if (m_thresholdMs <= 0)
        show();
    else
        m_delay.start(m_thresholdMs);
}

void StoreMigrationProgress::ended()
{
    // An end whose beginning came before this was watching: nothing of ours shows for it.
    if (m_running == 0)
        return;
    if (--m_running > 0)
        return;
    m_delay.stop();
    if (m_dialog) {
        m_dialog->close();
        m_dialog->deleteLater();
        m_dialog = nullptr;
        Q_EMIT hidden();
    }
}

void StoreMigrationProgress::show()
{
    if (m_dialog || m_running == 0)
        return;
    //% "Updating your data…"
    m_dialog = new QProgressDialog(qtTrId("store-migration-progress"), QString(), 0, 0, m_window);
    m_dialog->setObjectName(QStringLiteral("storeMigrationProgress"));
    m_dialog->setWindowTitle(QStringLiteral("Tolvane"));
    m_dialog->setWindowModality(m_window ? Qt::WindowModal : Qt::ApplicationModal);
    // It goes by itself when the migration ends; there is nothing to cancel.
    m_dialog->setWindowFlag(Qt::WindowCloseButtonHint, false);
    m_dialog->setMinimumDuration(0);
    m_dialog->show();
    Q_EMIT shown();
}
