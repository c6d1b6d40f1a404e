#pragma once

#include "tasks/applications/TaskChangeRecorder.h"

#include <QByteArray>
#include <QString>

class CalendarStore;
class UndoHistory;

// Undo and redo of a change to an event of the calendar store: the event's components as they
// were before the change and after it, put back whole, so that a series returns with its edited
// and removed occurrences exactly as it was. An event changed elsewhere in between is left alone.
class CalendarEventUndo {
public:
    // Takes the event as it stands, just before it is changed; blocks on the store.
    CalendarEventUndo(CalendarStore& store, QString calendarIdentifier, QString uid);
    // For an event just made: before it, there was none.
    static CalendarEventUndo ofNewEvent(CalendarStore& store, QString calendarIdentifier, QString uid);

    // Records the change just made as one step of history; blocks on the store. Never throws: an
    // event that cannot be read back is simply not recorded.
    void record(UndoHistory& history, TaskChangeVerbEnum verb, const QString& title) const;

private:
    CalendarStore* m_store;
    QString m_calendarIdentifier;
    QString m_uid;
    QByteArray m_before;
    bool m_readable = true;
};
