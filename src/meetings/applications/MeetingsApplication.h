#pragma once

#include "meetings/repositories/MeetRepository.h"

#include <QTimeZone>

#include <memory>

// The meet use cases the schedule and the event editor call. Blocking; run them off the GUI
// thread. Drafts are checked with MeetDomain before the repository hears of them; every failure
// is thrown (MeetValidationError, or the repository's error).
class MeetingsApplication {
public:
    MeetingsApplication(std::shared_ptr<MeetRepository> repository, QTimeZone calendar = QTimeZone::systemTimeZone());

    // Sorted by start, earliest first; meets starting together keep the repository's order.
    QList<MeetEntity> fetchMeets() const;
    MeetEntity createMeet(const MeetDraft& draft) const;
    MeetEntity updateMeet(const MeetEntity& meet, const MeetDraft& draft) const;
    void deleteMeet(const MeetEntity& meet) const;

    const QTimeZone& calendar() const { return m_calendar; }

private:
    std::shared_ptr<MeetRepository> m_repository;
    QTimeZone m_calendar;
};
