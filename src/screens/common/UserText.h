#pragma once

#include <QString>

// Names and titles the user typed, shown on widgets that read "&" as a keyboard accelerator
// (buttons, menu entries, tabs): doubled, "&" shows as typed instead of underlining the next
// letter. Labels need no such care; they show user text as plain text instead (no markup).
namespace UserText {

inline QString onButton(const QString& text)
{
    return QString(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace UserText
