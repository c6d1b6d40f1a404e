#pragma once

// The part of the calendar store that grants access to events. Statuses are the
// CalendarAuthorizationStatus numbers: 0 not determined, 1 restricted, 2 denied, 3 full access,
// 4 write only.
class EventStoreAuthorizing {
public:
    virtual ~EventStoreAuthorizing() = default;
    virtual int authorizationStatus() const = 0;
    // Asks for full access to events; true when it was granted.
    virtual bool requestFullAccessToEvents() = 0;
};
