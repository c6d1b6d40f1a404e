#include "undo/BackendEventUndo.h"

#include "meetings/domain/MeetingsError.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "undo/UndoHistory.h"

namespace {

using Snapshot = std::optional<EventResponseDTO>;

// Puts the event back as target has it, when the backend still has it as expected has it.
TasksRestore::Outcome restore(
    RemoteEventRepositoryImpl& events, const QString& evtId, const Snapshot& expected, const Snapshot& target)
{
    try {
        if (events.event(evtId) != expected)
            return {TasksRestore::OutcomeEnum::changedElsewhere, {}};
        events.restore(evtId, target);
        return {};
    } catch (const MeetingsError& error) {
        return {TasksRestore::OutcomeEnum::failed, error.localizedDescription()};
    }
}

} // namespace

BackendEventUndo::BackendEventUndo(std::shared_ptr<RemoteEventRepositoryImpl> events, QString evtId)
    : m_events(std::move(events))
    , m_evtId(std::move(evtId))
{
    if (m_evtId.isEmpty())
        return;
    try {
        m_before = m_events->event(m_evtId);
    } catch (const MeetingsError&) {
        m_readable = false;
    }
}

BackendEventUndo BackendEventUndo::ofNewEvent(std::shared_ptr<RemoteEventRepositoryImpl> events, QString evtId)
{
    BackendEventUndo made(std::move(events), QString());
    made.m_evtId = std::move(evtId);
    return made;
}

void BackendEventUndo::record(UndoHistory& history, TaskChangeVerbEnum verb, const QString& title) const
{
    if (!m_readable || m_evtId.isEmpty())
        return;
    Snapshot after;
    try {
        after = m_events->event(m_evtId);
    } catch (const MeetingsError&) {
        return;
    }
    if (after == m_before)
        return;
    history.record(
        UndoText::describeEvent(verb, title),
        [events = m_events, evtId = m_evtId, before = m_before, after] {
            return restore(*events, evtId, after, before);
        },
        [events = m_events, evtId = m_evtId, before = m_before, after] {
            return restore(*events, evtId, before, after);
        });
}
