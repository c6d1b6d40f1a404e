#pragma once

struct MeetEntity;
struct MeetDraft;

// The rules a meet must keep before it is written anywhere.
namespace MeetDomain {

// The title first (not blank once white space and line breaks are trimmed), then the duration
// (more than 0 seconds); throws MeetValidationError for the first rule broken.
void validate(const MeetEntity& meet);
// The same rules for a meet about to be made or changed.
void validate(const MeetDraft& draft);

} // namespace MeetDomain
