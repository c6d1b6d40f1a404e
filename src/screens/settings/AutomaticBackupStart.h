#pragma once

class AppServices;
class QObject;

// Starts the daily backup of the local stores for as long as owner lives.
void startAutomaticBackup(const AppServices& services, QObject* owner);
