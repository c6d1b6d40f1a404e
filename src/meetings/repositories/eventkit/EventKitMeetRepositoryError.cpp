#include "meetings/repositories/eventkit/EventKitMeetRepositoryError.h"

EventKitMeetRepositoryError EventKitMeetRepositoryError::saveFailed(const QString& reason)
{
    return {Case::saveFailed, reason};
}

EventKitMeetRepositoryError EventKitMeetRepositoryError::accessDenied()
{
    return {Case::accessDenied, QStringLiteral("Calendar access was denied")};
}

EventKitMeetRepositoryError EventKitMeetRepositoryError::eventNotFound()
{
    return {Case::eventNotFound, QStringLiteral("The event was not found in the calendar")};
}
