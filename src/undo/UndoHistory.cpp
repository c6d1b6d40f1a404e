#include "undo/UndoHistory.h"

#include "platform/NotificationCenter.h"
#include "screens/common/Async.h"
#include "undo/TasksRestore.h"

#include <QPointer>
#include <QUndoCommand>
#include <QUndoStack>

namespace {

using Applications = TasksApplicationFactory::Applications;

Applications withoutRecorder(Applications applications)
{
    applications.projects.recorder.reset();
    applications.taskLists.recorder.reset();
    applications.tasks.recorder.reset();
    applications.dailyTasks.recorder.reset();
    applications.bitacora.recorder.reset();
    return applications;
}

// One change on the stack. The stack only keeps the place: the stores were changed before it was
// pushed, and are changed by UndoHistory, off the GUI thread, before the stack moves past it.
class ChangeCommand final : public QUndoCommand {
public:
    ChangeCommand(const QString& text, UndoHistory::Way undo, UndoHistory::Way redo)
        : QUndoCommand(text)
        , undo(std::move(undo))
        , redo(std::move(redo))
    {
    }

    const UndoHistory::Way undo;
    const UndoHistory::Way redo;
};

class HistoryRecorder final : public TaskChangeRecorder {
public:
    HistoryRecorder(UndoHistory* history, Applications applications)
        : m_history(history)
        , m_applications(std::move(applications))
    {
    }

    void record(const TasksChange& change) override
    {
        // QPointer is read off the history's thread here; the history outlives every screen
        // that records into it, so this only guards the program's end.
        if (UndoHistory* history = m_history.data())
            history->record(m_applications, change);
    }

private:
    QPointer<UndoHistory> m_history;
    const Applications m_applications;
};

} // namespace

UndoHistory::UndoHistory(NotificationCenter* center, QObject* parent)
    : QObject(parent)
    , m_stack(new QUndoStack(this))
    , m_center(center)
{
    connect(m_stack, &QUndoStack::indexChanged, this, &UndoHistory::changed);
    if (m_center)
        m_center->addObserver(NotificationName::userAccountDidChange, this, [this](const QVariant&) { clear(); });
}

UndoHistory::~UndoHistory() = default;

std::shared_ptr<TaskChangeRecorder> UndoHistory::recorder(const Applications& applications)
{
    return std::make_shared<HistoryRecorder>(this, withoutRecorder(applications));
}

void UndoHistory::attach(Applications& applications)
{
    const std::shared_ptr<TaskChangeRecorder> shared = recorder(applications);
    applications.projects.recorder = shared;
    applications.taskLists.recorder = shared;
    applications.tasks.recorder = shared;
    applications.dailyTasks.recorder = shared;
    applications.bitacora.recorder = shared;
}

void UndoHistory::record(const Applications& applications, const TasksChange& change)
{
    const Applications restoring = withoutRecorder(applications);
    record(
        UndoText::describe(change),
        [restoring, change] { return TasksRestore::apply(restoring, change.after, change.before); },
        [restoring, change] { return TasksRestore::apply(restoring, change.before, change.after); });
    if (change.verb == TaskChangeVerbEnum::delete_ || change.verb == TaskChangeVerbEnum::deleteCompleted)
        QMetaObject::invokeMethod(
            this, [this, notice = UndoText::deletedNotice(change)] { Q_EMIT deleteRecorded(notice); });
}

void UndoHistory::record(const QString& text, Way undo, Way redo)
{
    QMetaObject::invokeMethod(this, [this, text, undo = std::move(undo), redo = std::move(redo)] {
        // Pushing runs the command's redo(), which does nothing: the change is already made.
        m_stack->push(new ChangeCommand(text, undo, redo));
        Q_EMIT changed();
        Q_EMIT recorded();
    });
}

bool UndoHistory::canUndo() const
{
    return m_stack->canUndo();
}

bool UndoHistory::canRedo() const
{
    return m_stack->canRedo();
}

QString UndoHistory::undoText() const
{
    return m_stack->undoText();
}

QString UndoHistory::redoText() const
{
    return m_stack->redoText();
}

int UndoHistory::count() const
{
    return m_stack->count();
}

void UndoHistory::clear()
{
    m_waiting.clear();
    m_stack->clear();
    Q_EMIT changed();
}

void UndoHistory::undo()
{
    step(true);
}

void UndoHistory::redo()
{
    step(false);
}

void UndoHistory::step(bool backwards)
{
    if (m_busy) {
        m_waiting.append(backwards);
        return;
    }
    if (!(backwards ? m_stack->canUndo() : m_stack->canRedo()))
        return;
    const int index = backwards ? m_stack->index() - 1 : m_stack->index();
    const auto* command = static_cast<const ChangeCommand*>(m_stack->command(index));
    m_busy = true;
    Q_EMIT changed();
    const QString text = command->text();
    runAsync(
        this, [way = backwards ? command->undo : command->redo] { return way(); },
        [this, backwards, text, index](const TasksRestore::Outcome& outcome) {
            m_busy = false;
            QString message;
            // The history may have been cleared meanwhile (an account change): then only the
            // stores moved, and there is no place left to move.
            const bool samePlace = m_stack->index() == (backwards ? index + 1 : index);
            if (outcome.outcome == TasksRestore::OutcomeEnum::done && samePlace) {
                if (backwards)
                    m_stack->undo();
                else
                    m_stack->redo();
            } else if (outcome.outcome == TasksRestore::OutcomeEnum::changedElsewhere) {
                message = backwards ? UndoText::changedElsewhereUndo(text) : UndoText::changedElsewhereRedo(text);
            } else if (outcome.outcome == TasksRestore::OutcomeEnum::failed) {
                message = UndoText::failed(outcome.message);
            }
            Q_EMIT changed();
            if (m_center && outcome.outcome != TasksRestore::OutcomeEnum::changedElsewhere)
                m_center->post(NotificationName::tasksDidChange);
            Q_EMIT finished(backwards, message);
            if (!message.isEmpty() || outcome.outcome != TasksRestore::OutcomeEnum::done)
                m_waiting.clear();
            else if (!m_waiting.isEmpty())
                step(m_waiting.takeFirst());
        });
}
