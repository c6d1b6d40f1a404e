#pragma once

#include "meetings/domain/MeetingsError.h"

// A template the user may not save.
class AlarmMessageDomainError : public MeetingsError {
public:
    enum class Case { missingEventPlaceholder };

    // Its text is the one the settings show under the field.
    static AlarmMessageDomainError missingEventPlaceholder();

    Case kind() const { return m_case; }
    friend bool operator==(const AlarmMessageDomainError& lhs, const AlarmMessageDomainError& rhs)
    {
        return lhs.m_case == rhs.m_case;
    }

private:
    AlarmMessageDomainError(Case kind, QString description)
        : MeetingsError(std::move(description))
        , m_case(kind)
    {
    }

    Case m_case;
};
