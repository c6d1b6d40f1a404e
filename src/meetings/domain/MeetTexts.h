#pragma once

#include <QString>

// Texts of the meetings module that the user reads, by translation key. Without a translation
// loaded the English text is used rather than the bare key.
namespace MeetTexts {

// "eventkit-meet-untitled"
QString untitled();
// "eventkit-meet-no-default-calendar"
QString noDefaultCalendar();

} // namespace MeetTexts
