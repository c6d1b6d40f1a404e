#include "meetings/applications/MeetingsApplication.h"

#include "meetings/domain/MeetDomain.h"

#include <algorithm>

MeetingsApplication::MeetingsApplication(std::shared_ptr<MeetRepository> repository, QTimeZone calendar)
    : m_repository(std::move(repository))
    , m_calendar(std::move(calendar))
{
}

QList<MeetEntity> MeetingsApplication::fetchMeets() const
{
    QList<MeetEntity> meets = m_repository->fetchMeets();
    std::stable_sort(meets.begin(), meets.end(),
        [](const MeetEntity& lhs, const MeetEntity& rhs) { return lhs.metDate < rhs.metDate; });
    return meets;
}

MeetEntity MeetingsApplication::createMeet(const MeetDraft& draft) const
{
    MeetDomain::validate(draft);
    return m_repository->createMeet(draft);
}

MeetEntity MeetingsApplication::updateMeet(const MeetEntity& meet, const MeetDraft& draft) const
{
    MeetDomain::validate(draft);
    return m_repository->updateMeet(meet, draft);
}

void MeetingsApplication::deleteMeet(const MeetEntity& meet) const
{
    m_repository->deleteMeet(meet);
}
