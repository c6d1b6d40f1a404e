#include "meetings/domain/MeetValidationError.h"

MeetValidationError MeetValidationError::invalidTitle()
{
    return {Case::invalidTitle, QStringLiteral("The meet title cannot be empty")};
}

MeetValidationError MeetValidationError::invalidTimeRange()
{
    return {Case::invalidTimeRange, QStringLiteral("The meet must end after it starts")};
}
