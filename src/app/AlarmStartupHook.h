#pragma once

class AppServices;

// Runs before the first window: the alarms install the notification delegate that opens a meet
// when its alarm is clicked.
void runAlarmStartupHook(const AppServices& services);
