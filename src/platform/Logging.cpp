#include "platform/Logging.h"

Q_LOGGING_CATEGORY(lcApp, "com.quorvel.tolvane.App", QtInfoMsg)
Q_LOGGING_CATEGORY(lcStorage, "com.quorvel.tolvane.Storage", QtInfoMsg)
Q_LOGGING_CATEGORY(lcKeychain, "com.quorvel.tolvane.Keychain", QtInfoMsg)
Q_LOGGING_CATEGORY(lcNetwork, "com.quorvel.tolvane.Network", QtInfoMsg)
Q_LOGGING_CATEGORY(lcCalendar, "com.quorvel.tolvane.Calendar", QtInfoMsg)
Q_LOGGING_CATEGORY(lcAlarms, "com.quorvel.tolvane.Alarms", QtInfoMsg)
Q_LOGGING_CATEGORY(lcLogin, "com.quorvel.tolvane.Login", QtInfoMsg)
