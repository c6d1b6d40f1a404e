#pragma once

#include "tasks/applications/TaskChangeRecorder.h"
#include "wire/events/EventResponseDTO.h"

#include <QString>

#include <memory>
#include <optional>

class RemoteEventRepositoryImpl;
class UndoHistory;

// Undo and redo of a change to an event the backend keeps (a Google account): the event as it was
// before the change and after it, put back whole under its own identifier. An event changed
// elsewhere in between (by another client, or on the backend) is left alone.
class BackendEventUndo {
public:
    // Takes the event as it stands, just before it is changed; blocks on the backend.
    BackendEventUndo(std::shared_ptr<RemoteEventRepositoryImpl> events, QString evtId);
    // For an event just made: before it, there was none.
    static BackendEventUndo ofNewEvent(std::shared_ptr<RemoteEventRepositoryImpl> events, QString evtId);

    // Records the change just made as one step of history; blocks on the backend. Never throws:
    // an event that cannot be read back is simply not recorded.
    void record(UndoHistory& history, TaskChangeVerbEnum verb, const QString& title) const;

private:
    std::shared_ptr<RemoteEventRepositoryImpl> m_events;
    QString m_evtId;
    std::optional<EventResponseDTO> m_before;
    bool m_readable = true;
};
