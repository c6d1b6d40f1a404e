#include "meetings/repositories/CompositeMeetRepositoryImpl.h"

CompositeMeetRepositoryImpl::CompositeMeetRepositoryImpl(std::vector<std::shared_ptr<MeetRepository>> repositories)
    : repositories(std::move(repositories))
{
}

QList<MeetEntity> CompositeMeetRepositoryImpl::fetchMeets()
{
    QList<MeetEntity> meets;
    for (const std::shared_ptr<MeetRepository>& repository : repositories) {
        try {
            meets.append(repository->fetchMeets());
        } catch (const std::exception&) {
            // One source down must not empty the schedule; the others still show.
        }
    }
    return meets;
}

MeetRepository& CompositeMeetRepositoryImpl::first() const
{
    if (repositories.empty())
        throw CompositeMeetRepositoryError::noRepositoryAvailable();
    return *repositories.front();
}

MeetEntity CompositeMeetRepositoryImpl::createMeet(const MeetDraft& draft)
{
    return first().createMeet(draft);
}

MeetEntity CompositeMeetRepositoryImpl::updateMeet(const MeetEntity& meet, const MeetDraft& draft)
{
    return first().updateMeet(meet, draft);
}

void CompositeMeetRepositoryImpl::deleteMeet(const MeetEntity& meet)
{
    first().deleteMeet(meet);
}
