#pragma once

#include "backup/StoreBackups.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

// Makes the daily backup when the program starts and, while it keeps running, once the day has
// changed: the check runs every hour on a pool thread, never on the GUI thread.
class AutomaticBackup : public QObject {
    Q_OBJECT

public:
    using BackupsProvider = std::function<std::optional<StoreBackups>()>;

    explicit AutomaticBackup(BackupsProvider backups, QObject* parent = nullptr);
    void start();

Q_SIGNALS:
    // A daily backup was made (data: StoreBackupEntity) or failed.
    void finished(const ResultEntity& result);

private:
    void check();

    BackupsProvider m_backups;
    QTimer m_timer;
    bool m_running = false;
};
