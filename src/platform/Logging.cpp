#include "platform/Logging.h"

Q_LOGGING_CATEGORY(lcApp, "com.quorvel.tolvane.App")
Q_LOGGING_CATEGORY(lcStorage, "com.quorvel.tolvane.Storage")
Q_LOGGING_CATEGORY(lcKeychain, "com.quorvel.tolvane.Keychain")
Q_LOGGING_CATEGORY(lcNetwork, "com.quorvel.tolvane.Network")
Q_LOGGING_CATEGORY(lcCalendar, "com.quorvel.tolvane.Calendar")
Q_LOGGING_CATEGORY(lcAlarms, "com.quorvel.tolvane.Alarms")
Q_LOGGING_CATEGORY(lcLogin, "com.quorvel.tolvane.Login")
