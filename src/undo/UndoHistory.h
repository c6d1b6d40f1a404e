#pragma once

#include "tasks/TasksApplicationFactory.h"
#include "tasks/applications/TaskChangeRecorder.h"
#include "undo/TasksRestore.h"

#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class NotificationCenter;
class QUndoStack;

// The one history of the user's changes, across workspaces: every change the Tasks use cases
// complete is recorded here, and undone or redone through the same use cases. The work runs off
// the GUI thread; the stack moves only once it succeeded. An undo whose item changed elsewhere
// since says so and leaves both the stores and the history as they were.
class UndoHistory final : public QObject {
    Q_OBJECT

public:
    // center (may be null) hears NotificationName::tasksDidChange after each undo and redo; an
    // account change clears the history.
    explicit UndoHistory(NotificationCenter* center = nullptr, QObject* parent = nullptr);
    ~UndoHistory() override;

    // A recorder for applications built from the same repositories: what it hears is undone
    // with them. They must not report back here themselves.
    std::shared_ptr<TaskChangeRecorder> recorder(const TasksApplicationFactory::Applications& applications);
    // Gives applications a recorder over themselves.
    void attach(TasksApplicationFactory::Applications& applications);

    // Any thread; the change lands on the history's thread.
    void record(const TasksApplicationFactory::Applications& applications, const TasksChange& change);
    // A change made outside the Tasks use cases (a calendar event), named by text ("move event
    // 'Review'"). Each way runs off the GUI thread and must hold everything it needs. Any thread.
    using Way = std::function<TasksRestore::Outcome()>;
    void record(const QString& text, Way undo, Way redo);

    // Whether there is a step to take; one asked for while another runs waits its turn.
    bool canUndo() const;
    bool canRedo() const;
    bool isBusy() const { return m_busy; }
    // "delete task 'Pay rent'"; empty when there is nothing.
    QString undoText() const;
    QString redoText() const;
    int count() const;
    void clear();

    void undo();
    void redo();

    QUndoStack* stack() const { return m_stack; }

Q_SIGNALS:
    // The stack, its texts or the busy flag changed.
    void changed();
    // A change made through the use cases landed on the history: what shows tasks elsewhere may
    // be out of date.
    void recorded();
    // A delete was recorded; notice is what the user is shown ("Deleted task 'Pay rent'").
    void deleteRecorded(const QString& notice);
    // An undo or redo finished; message is empty on success, else what the user is told.
    void finished(bool undone, const QString& message);

private:
    void step(bool backwards);

    QUndoStack* m_stack;
    NotificationCenter* m_center;
    bool m_busy = false;
    // Steps asked for while one was running (Ctrl+Z pressed three times quickly), true for undo;
    // taken in order, and dropped when one fails.
    QList<bool> m_waiting;
};

namespace UndoText {
// "delete task 'Pay rent'", in the user's language.
QString describe(const TasksChange& change);
// "move event 'Review'".
QString describeEvent(TaskChangeVerbEnum change, const QString& title);
// "Undo delete task 'Pay rent'", or "Undo" with nothing to undo.
QString undoAction(const QString& text);
QString redoAction(const QString& text);
// The notice after a delete: "Deleted task 'Pay rent'".
QString deletedNotice(const TasksChange& change);
// "Can't undo delete task 'Pay rent': it was changed elsewhere since."
QString changedElsewhereUndo(const QString& text);
QString changedElsewhereRedo(const QString& text);
QString failed(const QString& reason);
} // namespace UndoText
