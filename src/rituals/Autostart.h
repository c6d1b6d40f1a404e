#pragma once

#include <QString>

// Starting Tolvane at login, hidden in the tray, so that alarms ring on a day it was never opened:
// an XDG autostart entry, "$XDG_CONFIG_HOME/autostart/com.quorvel.tolvane.desktop", which runs
// the program with --background. The desktop reads the folder at login; nothing else is kept.
class Autostart {
public:
    static inline const QString desktopId = QStringLiteral("com.quorvel.tolvane");

    // The entry for program (an absolute path, or a name the login session finds on PATH).
    explicit Autostart(QString program);

    static QString entryPath();
    bool isEnabled() const;
    // Writes or removes the entry; false, with why in error, when the file could not be changed.
    bool setEnabled(bool enabled, QString* error = nullptr) const;
    // The entry's text.
    QString entryText() const;

private:
    QString m_program;
};
