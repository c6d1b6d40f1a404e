#include "meetings/domain/MeetDomain.h"

#include "meetings/domain/MeetValidationError.h"
#include "meetings/entities/MeetDraft.h"
#include "meetings/entities/MeetEntity.h"
#include "platform/Text.h"

namespace MeetDomain {

void validate(const MeetEntity& meet)
{
    if (Text::isBlank(meet.metName))
        throw MeetValidationError::invalidTitle();
    if (!(meet.metDuration > 0))
        throw MeetValidationError::invalidTimeRange();
}

void validate(const MeetDraft& draft)
{
    MeetEntity candidate;
    candidate.metName = draft.title;
    candidate.metDate = draft.start;
    // Invalid times make no duration at all rather than a huge one.
    candidate.metDuration
        = draft.start.isValid() && draft.end.isValid() ? double(draft.start.msecsTo(draft.end)) / 1000.0 : 0;
    validate(candidate);
}

} // namespace MeetDomain
