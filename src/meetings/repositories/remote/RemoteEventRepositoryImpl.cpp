#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"

#include "meetings/domain/MeetIdentity.h"
#include "meetings/domain/MeetRepetition.h"
#include "meetings/repositories/remote/RemoteEventRepositoryError.h"
#include "networking/APIErrorMessageEnum.h"
#include "wire/events/EventRequestDTO.h"

#include <QStringList>

#include <array>

namespace {

const QString eventsPath = QStringLiteral("/v0/events");

constexpr std::array<const char*, 7> tokens = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};

template <typename Call> auto endpoint(Call call)
{
    try {
        return call();
    } catch (const APIError& error) {
        throw RemoteEventRepositoryError::endpointFailed(
            APIErrorMessageEnum::message(error, QStringLiteral("evento no encontrado")));
    }
}

} // namespace

RemoteEventRepositoryImpl::RemoteEventRepositoryImpl(
    APIClient client, AppearanceIsDark appearanceIsDark, AlarmIsArmed alarmIsArmed)
    : client(std::move(client))
    , appearanceIsDark(std::move(appearanceIsDark))
    , alarmIsArmed(std::move(alarmIsArmed))
{
}

QString RemoteEventRepositoryImpl::repeatCode(MeetRecurrenceFrequency frequency)
{
    switch (frequency) {
    case MeetRecurrenceFrequency::daily:
        return QStringLiteral("every_day");
    case MeetRecurrenceFrequency::weekly:
        return QStringLiteral("every_week");
    case MeetRecurrenceFrequency::monthly:
        return QStringLiteral("every_month");
    case MeetRecurrenceFrequency::none:
        break;
    }
    return QStringLiteral("none");
}

MeetRecurrenceFrequency RemoteEventRepositoryImpl::frequency(const QString& repeatCode)
{
    if (repeatCode == QLatin1String("every_day"))
        return MeetRecurrenceFrequency::daily;
    if (repeatCode == QLatin1String("every_week"))
        return MeetRecurrenceFrequency::weekly;
    if (repeatCode == QLatin1String("every_month"))
        return MeetRecurrenceFrequency::monthly;
    return MeetRecurrenceFrequency::none;
}

QString RemoteEventRepositoryImpl::weekdayTokens(const QSet<int>& weekdays)
{
    QStringList written;
    for (int day = 1; day <= 7; ++day) {
        if (weekdays.contains(day))
            written.append(QString::fromLatin1(tokens.at(day - 1)));
    }
    return written.join(QLatin1Char('|'));
}

QSet<int> RemoteEventRepositoryImpl::weekdays(const QString& text)
{
    QSet<int> days;
    for (const QString& token : text.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        for (size_t i = 0; i < tokens.size(); ++i) {
            if (token == QLatin1String(tokens.at(i)))
                days.insert(int(i) + 1);
        }
    }
    return days;
}

MeetColor RemoteEventRepositoryImpl::color() const
{
    const bool dark = appearanceIsDark && appearanceIsDark();
    return {dark ? QStringLiteral("#4FA8AC") : QStringLiteral("#5CC2C6")};
}

MeetEntity RemoteEventRepositoryImpl::meet(const EventResponseDTO& event) const
{
    MeetEntity meet;
    meet.metId = MeetIdentity::forBackendEvent(event.evtId);
    meet.metName = event.evtTitle;
    meet.metDate = event.evtSchedule;
    meet.metDescription = event.evtDescription;
    meet.metDuration = double(event.evtDurationMinutes) * 60;
    meet.metColor = color();
    meet.metIsAllDay = false;
    meet.metCalendarName = QStringLiteral("Tolvane");
    meet.metCalendarIdentifier = calendarIdentifier;
    meet.metRecurrenceFrequency = frequency(event.evtRepeat);
    if (event.evtRepeat == QLatin1String("every_week"))
        meet.metRecurringWeekdays = weekdays(event.evtCustomRepeat);
    meet.metOriginalIdentifier = event.evtId;
    meet.metSource = MeetSource::backend;
    return meet;
}

namespace {

template <typename DTO> DTO requestBody(const MeetDraft& draft, bool hasAlarm)
{
    DTO body;
    body.evtTitle = draft.title;
    body.evtSchedule = draft.start;
    body.evtDurationMinutes = draft.start.secsTo(draft.end) / 60;
    body.evtHasAlarm = hasAlarm;
    body.evtDescription = draft.description;
    body.evtRepeat = RemoteEventRepositoryImpl::repeatCode(draft.recurrence);
    if (draft.recurrence == MeetRecurrenceFrequency::weekly)
        body.evtCustomRepeat = RemoteEventRepositoryImpl::weekdayTokens(draft.weekdays);
    return body;
}

} // namespace

QList<MeetEntity> RemoteEventRepositoryImpl::fetchMeets()
{
    const QList<EventResponseDTO> events = endpoint([&] { return client.get<QList<EventResponseDTO>>(eventsPath); });
    QList<MeetEntity> meets;
    meets.reserve(events.size());
    for (const EventResponseDTO& event : events) {
        const MeetEntity whole = meet(event);
        if (!m_range || whole.metRecurrenceFrequency == MeetRecurrenceFrequency::none) {
            meets.append(whole);
            continue;
        }
        for (const QDateTime& start : MeetRepetition::starts(whole, m_range->from, m_range->to, m_range->zone))
            meets.append(occurrence(whole, start));
    }
    return meets;
}

MeetEntity RemoteEventRepositoryImpl::occurrence(const MeetEntity& event, const QDateTime& start)
{
    MeetEntity one = event;
    if (start == event.metDate)
        return one;
    one.metDate = start;
    one.metId = MeetIdentity::forOccurrence(event.metOriginalIdentifier, start);
    return one;
}

MeetEntity RemoteEventRepositoryImpl::createMeet(const MeetDraft& draft)
{
    // A meet not made yet has no alarm to be armed.
    const auto body = requestBody<EventRequestDTO>(draft, false);
    return meet(endpoint([&] { return client.post<EventResponseDTO>(eventsPath, body); }));
}

MeetEntity RemoteEventRepositoryImpl::updateMeet(const MeetEntity& existing, const MeetDraft& draft)
{
    auto body = requestBody<EventRequestDTO>(draft, alarmIsArmed && alarmIsArmed(existing.metId));
    // From an occurrence of a repetition that goes on repeating, the whole event moves by the
    // occurrence's shift: editing next Tuesday's instance must not make it the first one. One
    // that stops repeating becomes the meet the user was looking at.
    std::optional<qint64> shift;
    if (existing.metRecurrenceFrequency != MeetRecurrenceFrequency::none
        && draft.recurrence != MeetRecurrenceFrequency::none) {
        shift = existing.metDate.msecsTo(draft.start);
        if (const std::optional<EventResponseDTO> stored = event(existing.metOriginalIdentifier))
            body.evtSchedule = stored->evtSchedule.addMSecs(*shift);
    }
    const MeetEntity saved = meet(endpoint([&] {
        return client.put<EventResponseDTO>(eventsPath + QLatin1Char('/') + existing.metOriginalIdentifier, body);
    }));
    return shift ? occurrence(saved, draft.start) : saved;
}

void RemoteEventRepositoryImpl::deleteMeet(const MeetEntity& existing)
{
    endpoint([&] {
        client.delete_(eventsPath + QLatin1Char('/') + existing.metOriginalIdentifier);
        return 0;
    });
}

std::optional<EventResponseDTO> RemoteEventRepositoryImpl::event(const QString& evtId)
{
    return endpoint([&]() -> std::optional<EventResponseDTO> {
        try {
            return client.get<EventResponseDTO>(eventsPath + QLatin1Char('/') + evtId);
        } catch (const APIError& error) {
            if (error.kind() == APIError::Case::notFound)
                return std::nullopt;
            throw;
        }
    });
}

void RemoteEventRepositoryImpl::restore(const QString& evtId, const std::optional<EventResponseDTO>& target)
{
    const QString path = eventsPath + QLatin1Char('/') + evtId;
    const bool exists = event(evtId).has_value();
    if (!target) {
        if (exists)
            endpoint([&] {
                client.delete_(path);
                return 0;
            });
        return;
    }
    EventRequestDTO body;
    body.evtTitle = target->evtTitle;
    body.evtSchedule = target->evtSchedule;
    body.evtDurationMinutes = target->evtDurationMinutes;
    body.evtHasAlarm = alarmIsArmed && alarmIsArmed(MeetIdentity::forBackendEvent(evtId));
    body.evtDescription = target->evtDescription;
    body.evtRepeat = target->evtRepeat;
    body.evtCustomRepeat = target->evtCustomRepeat;
    if (exists) {
        endpoint([&] { return client.put<EventResponseDTO>(path, body); });
        return;
    }
    body.evtId = evtId;
    endpoint([&] { return client.post<EventResponseDTO>(eventsPath, body); });
}
