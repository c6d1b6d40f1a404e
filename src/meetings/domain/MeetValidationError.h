#pragma once

#include "meetings/domain/MeetingsError.h"

// A meet the user may not save; raised before any repository is asked.
class MeetValidationError : public MeetingsError {
public:
    enum class Case { invalidTitle, invalidTimeRange };

    static MeetValidationError invalidTitle();
    static MeetValidationError invalidTimeRange();

    Case kind() const { return m_case; }
    friend bool operator==(const MeetValidationError& lhs, const MeetValidationError& rhs)
    {
        return lhs.m_case == rhs.m_case;
    }

private:
    MeetValidationError(Case kind, QString description)
        : MeetingsError(std::move(description))
        , m_case(kind)
    {
    }

    Case m_case;
};
