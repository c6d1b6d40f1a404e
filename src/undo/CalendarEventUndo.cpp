#include "undo/CalendarEventUndo.h"

#include "platform/calendar_store/CalendarStore.h"
#include "undo/UndoHistory.h"

namespace {

// Puts the event back as target has it, when it still is as expected has it.
TasksRestore::Outcome restore(CalendarStore& store, const QString& calendarIdentifier, const QString& uid,
    const QByteArray& expected, const QByteArray& target)
{
    try {
        if (!CalendarStore::sameSnapshot(store.eventSnapshot(calendarIdentifier, uid), expected))
            return {TasksRestore::OutcomeEnum::changedElsewhere, {}};
        store.restoreEvent(calendarIdentifier, uid, target);
        return {};
    } catch (const CalendarStoreError& error) {
        return {TasksRestore::OutcomeEnum::failed, error.localizedDescription()};
    }
}

} // namespace

CalendarEventUndo::CalendarEventUndo(CalendarStore& store, QString calendarIdentifier, QString uid)
    : m_store(&store)
    , m_calendarIdentifier(std::move(calendarIdentifier))
    , m_uid(std::move(uid))
{
    if (m_uid.isEmpty())
        return;
    try {
        m_before = store.eventSnapshot(m_calendarIdentifier, m_uid);
    } catch (const CalendarStoreError&) {
        m_readable = false;
    }
}

CalendarEventUndo CalendarEventUndo::ofNewEvent(CalendarStore& store, QString calendarIdentifier, QString uid)
{
    CalendarEventUndo made(store, std::move(calendarIdentifier), QString());
    made.m_uid = std::move(uid);
    return made;
}

void CalendarEventUndo::record(UndoHistory& history, TaskChangeVerbEnum verb, const QString& title) const
{
    if (!m_readable || m_uid.isEmpty())
        return;
    QByteArray after;
    try {
        after = m_store->eventSnapshot(m_calendarIdentifier, m_uid);
    } catch (const CalendarStoreError&) {
        return;
    }
    if (CalendarStore::sameSnapshot(after, m_before))
        return;
    CalendarStore* store = m_store;
    history.record(
        UndoText::describeEvent(verb, title),
        [store, calendar = m_calendarIdentifier, uid = m_uid, before = m_before, after] {
            return restore(*store, calendar, uid, after, before);
        },
        [store, calendar = m_calendarIdentifier, uid = m_uid, before = m_before, after] {
            return restore(*store, calendar, uid, before, after);
        });
}
