#pragma once

#include "meetings/entities/MeetDraft.h"
#include "meetings/entities/MeetEntity.h"

#include <QList>

// Where meets are read and written. Every operation blocks (run it off the GUI thread) and
// throws a MeetingsError subclass on failure.
class MeetRepository {
public:
    virtual ~MeetRepository() = default;

    // The meets of the repository's date range.
    virtual QList<MeetEntity> fetchMeets() = 0;
    virtual MeetEntity createMeet(const MeetDraft& draft) = 0;
    // meet is found by its metOriginalIdentifier and, for a repeating event, its metDate.
    virtual MeetEntity updateMeet(const MeetEntity& meet, const MeetDraft& draft) = 0;
    virtual void deleteMeet(const MeetEntity& meet) = 0;
};
