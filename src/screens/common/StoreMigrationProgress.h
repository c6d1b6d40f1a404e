#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class NotificationCenter;
class QProgressDialog;
class QWidget;

// "Updating your data…": a small modal notice over the window while a local store is brought to
// this version's schema. It shows only once a migration has run longer than the threshold, so
// that a quick one does not flash it, and goes when every migration under way has ended. The
// migrations run on the screens' threads and never wait for it.
class StoreMigrationProgress final : public QObject {
    Q_OBJECT

public:
    static constexpr int defaultThresholdMs = 1000;

    // Follows the storeMigrationRunning notifications of center; window: what the notice is
    // modal over (null: the whole application).
    StoreMigrationProgress(
        NotificationCenter& center, QWidget* window, int thresholdMs = defaultThresholdMs, QObject* parent = nullptr);
    ~StoreMigrationProgress() override;

    // The notice while it shows; null otherwise.
    QProgressDialog* dialog() const;

Q_SIGNALS:
    void shown();
    void hidden();

private:
    void began();
    void ended();
    void show();

    QPointer<QWidget> m_window;
    int m_thresholdMs;
    int m_running = 0;
    QTimer m_delay;
    QPointer<QProgressDialog> m_dialog;
};
