#pragma once

#include "meetings/repositories/MeetRepository.h"
#include "networking/APIClient.h"
#include "wire/events/EventResponseDTO.h"

#include <functional>

// Meets kept by the backend under "/v0/events". Every failure of the API client is thrown as
// RemoteEventRepositoryError::endpointFailed with the client's Spanish message.
class RemoteEventRepositoryImpl final : public MeetRepository {
public:
    // Whether the application currently looks dark, which picks the colour of backend meets.
    using AppearanceIsDark = std::function<bool()>;
    // Whether an alarm is armed on the meet, sent along as evtHasAlarm.
    using AlarmIsArmed = std::function<bool(const QUuid& metId)>;

    explicit RemoteEventRepositoryImpl(
        APIClient client, AppearanceIsDark appearanceIsDark = {}, AlarmIsArmed alarmIsArmed = {});

    // Every event of the user: the backend takes no range.
    QList<MeetEntity> fetchMeets() override;
    MeetEntity createMeet(const MeetDraft& draft) override;
    MeetEntity updateMeet(const MeetEntity& meet, const MeetDraft& draft) override;
    void deleteMeet(const MeetEntity& meet) override;

    MeetEntity meet(const EventResponseDTO& event) const;

    // "every_day", "every_week", "every_month"; "none" for no repetition.
    static QString repeatCode(MeetRecurrenceFrequency frequency);
    static MeetRecurrenceFrequency frequency(const QString& repeatCode);
    // "sun|mon|..." in weekday order; unknown tokens are skipped when reading.
    static QString weekdayTokens(const QSet<int>& weekdays);
    static QSet<int> weekdays(const QString& tokens);

private:
    APIClient client;
    AppearanceIsDark appearanceIsDark;
    AlarmIsArmed alarmIsArmed;
};
