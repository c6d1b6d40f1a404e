#pragma once

#include <QLoggingCategory>

// Logging categories, all under "com.quorvel.tolvane".
Q_DECLARE_LOGGING_CATEGORY(lcApp)
Q_DECLARE_LOGGING_CATEGORY(lcStorage)
Q_DECLARE_LOGGING_CATEGORY(lcKeychain)
Q_DECLARE_LOGGING_CATEGORY(lcNetwork)
Q_DECLARE_LOGGING_CATEGORY(lcCalendar)
Q_DECLARE_LOGGING_CATEGORY(lcAlarms)
Q_DECLARE_LOGGING_CATEGORY(lcLogin)
