#pragma once

#include "meetings/domain/MeetingsError.h"

class EventKitMeetRepositoryError : public MeetingsError {
public:
    enum class Case { saveFailed, accessDenied, eventNotFound };

    // reason: what the user is shown, normally the store's own explanation.
    static EventKitMeetRepositoryError saveFailed(const QString& reason);
    static EventKitMeetRepositoryError accessDenied();
    static EventKitMeetRepositoryError eventNotFound();

    Case kind() const { return m_case; }
    friend bool operator==(const EventKitMeetRepositoryError& lhs, const EventKitMeetRepositoryError& rhs)
    {
        return lhs.m_case == rhs.m_case && lhs.localizedDescription() == rhs.localizedDescription();
    }

private:
    EventKitMeetRepositoryError(Case kind, QString description)
        : MeetingsError(std::move(description))
        , m_case(kind)
    {
    }

    Case m_case;
};
