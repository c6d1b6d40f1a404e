#pragma once

#include <QString>

// Where Tolvane keeps its files, following the XDG base directories. Each function creates the
// directory it names when it is missing.
namespace AppPaths {

// "$XDG_DATA_HOME", the counterpart of Application Support.
QString applicationSupportDirectory();

// "$XDG_DATA_HOME/Tolvane" (mode 0700): the encrypted stores, the logs, pending alarms.
QString tolvaneDataDirectory();

// "$XDG_DATA_HOME/group.tolvane", or a temporary directory when it cannot be created.
QString appGroupContainer();

// "$XDG_DATA_HOME/sounds": sounds the notification server can play.
QString userSoundsDirectory();

} // namespace AppPaths
