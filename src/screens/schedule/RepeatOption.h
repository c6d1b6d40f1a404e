#pragma once

#include "meetings/entities/MeetRecurrenceFrequency.h"

#include <QLocale>
#include <QSet>
#include <QString>

#include <array>
#include <optional>

// The repetitions the event editor offers.
enum class RepeatOption { never, day, week, month };

namespace Repeat {

inline constexpr std::array<RepeatOption, 4> allCases {
    RepeatOption::never, RepeatOption::day, RepeatOption::week, RepeatOption::month};

QString label(RepeatOption option);
MeetRecurrenceFrequency frequency(RepeatOption option);
RepeatOption option(MeetRecurrenceFrequency frequency);

// The one-line summary under the repeat choice, in the texts of the installed translator and the
// weekday names of locale; none where there is nothing to say. weekdays: 1 = Sunday ... 7 =
// Saturday.
std::optional<QString> summary(
    MeetRecurrenceFrequency frequency, const QSet<int>& weekdays, const QLocale& locale = QLocale());

// The locale's name of a weekday numbered 1 = Sunday ... 7 = Saturday.
QString weekdayName(int weekday, const QLocale& locale, QLocale::FormatType format = QLocale::LongFormat);

} // namespace Repeat
