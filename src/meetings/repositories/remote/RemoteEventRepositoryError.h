#pragma once

#include "meetings/domain/MeetingsError.h"

class RemoteEventRepositoryError : public MeetingsError {
public:
    enum class Case { endpointFailed };

    // message: the API error's text ("evento no encontrado" for a missing event).
    static RemoteEventRepositoryError endpointFailed(const QString& message)
    {
        return RemoteEventRepositoryError(message);
    }

    Case kind() const { return Case::endpointFailed; }
    friend bool operator==(const RemoteEventRepositoryError& lhs, const RemoteEventRepositoryError& rhs)
    {
        return lhs.localizedDescription() == rhs.localizedDescription();
    }

private:
    explicit RemoteEventRepositoryError(QString message)
        : MeetingsError(std::move(message))
    {
    }
};
