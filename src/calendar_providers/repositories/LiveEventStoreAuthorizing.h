#pragma once

#include "calendar_providers/repositories/EventStoreAuthorizing.h"

class CalendarStore;

// The desktop's calendar store answering for itself.
class LiveEventStoreAuthorizing final : public EventStoreAuthorizing {
public:
    explicit LiveEventStoreAuthorizing(CalendarStore& store);

    int authorizationStatus() const override;
    bool requestFullAccessToEvents() override;

private:
    CalendarStore& m_store;
};
