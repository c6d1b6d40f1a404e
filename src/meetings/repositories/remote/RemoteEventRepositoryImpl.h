#pragma once

#include "meetings/repositories/MeetRepository.h"
#include "networking/APIClient.h"
#include "wire/events/EventResponseDTO.h"

#include <QTimeZone>

#include <functional>
#include <optional>

// Meets kept by the backend under "/v0/events". Every failure of the API client is thrown as
// RemoteEventRepositoryError::endpointFailed with the client's Spanish message.
class RemoteEventRepositoryImpl final : public MeetRepository {
public:
    // Whether the application currently looks dark, which picks the colour of backend meets.
    using AppearanceIsDark = std::function<bool()>;
    // Whether an alarm is armed on the meet, sent along as evtHasAlarm.
    using AlarmIsArmed = std::function<bool(const QUuid& metId)>;

    // The calendar every backend meet reads as being in.
    static inline const QString calendarIdentifier = QStringLiteral("tolvane-native-calendar");

    explicit RemoteEventRepositoryImpl(
        APIClient client, AppearanceIsDark appearanceIsDark = {}, AlarmIsArmed alarmIsArmed = {});

    // The days the meets are read for. A repeating event then reads as its occurrences that
    // overlap [from, to), on the wall clock of zone; without a range, as itself at its start.
    struct Range {
        QDateTime from;
        QDateTime to;
        QTimeZone zone;
    };
    void setRange(std::optional<Range> range) { m_range = std::move(range); }

    // Every event of the user (the backend takes no range), expanded within the range if set.
    QList<MeetEntity> fetchMeets() override;
    MeetEntity createMeet(const MeetDraft& draft) override;
    // The backend keeps no exceptions to a repetition: a change made from one occurrence is made
    // to the whole event, moved by as much as that occurrence was.
    MeetEntity updateMeet(const MeetEntity& meet, const MeetDraft& draft) override;
    void deleteMeet(const MeetEntity& meet) override;

    MeetEntity meet(const EventResponseDTO& event) const;
    // What every backend meet is drawn in, by the appearance.
    MeetColor color() const;
    // The occurrence of a repeating event's meet at start. The one at the event's own start keeps
    // the event's identity; every other has its own, so that each may have its alarm.
    static MeetEntity occurrence(const MeetEntity& event, const QDateTime& start);

    // The event as the backend keeps it now; none when it has no event of that identifier.
    std::optional<EventResponseDTO> event(const QString& evtId);
    // Makes the backend keep target under evtId: rewritten when it is there, made anew under the
    // same identifier when it is not, deleted when target is none.
    void restore(const QString& evtId, const std::optional<EventResponseDTO>& target);

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
    std::optional<Range> m_range;
};
