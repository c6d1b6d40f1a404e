#pragma once

#include <QIcon>
#include <QString>

// The symbols the screens use, by their symbol names ("calendar", "checklist", "trash", ...):
// the desktop's icon theme first, a bundled drawing when the theme has none.
namespace Icons {

QIcon symbol(const QString& name);

} // namespace Icons
