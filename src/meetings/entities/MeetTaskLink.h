#pragma once

#include <QHashFunctions>
#include <QString>
#include <QUuid>

#include <optional>

// The task a meet blocks time for: a task of a project's list or an entry of the daily
// checklist. Kept in the calendar event itself, so the link travels with the event.
struct MeetTaskLink {
    enum class Kind { task, dailyTask };
    // How long the time blocked for a task is at first.
    static constexpr int blockSeconds = 30 * 60;

    Kind kind = Kind::task;
    QUuid id;

    // "task:<uuid>" or "daily-task:<uuid>", the form the event carries.
    QString rawValue() const;
    // None for a value this program did not write (or wrote in a form it no longer reads).
    static std::optional<MeetTaskLink> fromRawValue(const QString& raw);

    friend bool operator==(const MeetTaskLink&, const MeetTaskLink&) = default;
};

inline size_t qHash(const MeetTaskLink& link, size_t seed = 0) noexcept
{
    return qHashMulti(seed, int(link.kind), link.id);
}
