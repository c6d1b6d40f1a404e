#pragma once

#include "tasks/applications/DailyTasksApplication.h"

#include <QObject>

class ErrorConsoleStore;

// The daily checklist's changes, each through the daily tasks use cases off the GUI thread.
// saved follows every change that went through, so the pane can reload.
class DailyTaskController final : public QObject {
    Q_OBJECT

public:
    DailyTaskController(DailyTasksApplication application, ErrorConsoleStore& console, QObject* parent = nullptr);

    // The checklist entry of a day; daily tasks are dated at noon, so the day reads the same in
    // local time and in UTC.
    static QDateTime dateOf(const QDate& day);

    void add(const QUuid& userId, const QDate& day, const QString& title);
    void rename(const DailyTaskEntity& task, const QString& title);
    void setDone(const DailyTaskEntity& task, bool isDone);
    void delete_(const DailyTaskEntity& task);

    const DailyTasksApplication application;

Q_SIGNALS:
    void saved();
    void failed(const QString& message);

private:
    template <typename Work> void run(const QString& action, Work&& work);

    ErrorConsoleStore& m_console;
};
