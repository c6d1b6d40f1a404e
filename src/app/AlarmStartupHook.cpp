#include "AlarmStartupHook.h"

void runAlarmStartupHook(const AppServices&)
{
    // Nothing to install until alarms exist.
}
