#include "rituals/Autostart.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>

namespace {

// The Exec key's quoting: a path with spaces or quotes still runs.
QString execArgument(const QString& argument)
{
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    if (std::none_of(argument.begin(), argument.end(), [](QChar c) { return reserved.contains(c); }))
        return argument;
    QString quoted = argument;
    quoted.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
        .replace(QLatin1Char('"'), QStringLiteral("\\\""))
        .replace(QLatin1Char('`'), QStringLiteral("\\`"))
        .replace(QLatin1Char('$'), QStringLiteral("\\$"));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

} // namespace

Autostart::Autostart(QString program)
    : m_program(std::move(program))
{
}

QString Autostart::entryPath()
{
    // GenericConfigLocation is $XDG_CONFIG_HOME, or ~/.config when it is not set.
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/autostart/")
        + desktopId + QStringLiteral(".desktop");
}

bool Autostart::isEnabled() const
{
    return QFileInfo::exists(entryPath());
}

QString Autostart::entryText() const
{
    // In the desktop entry format "%" starts a field code; a literal one is written twice.
    QString exec = execArgument(m_program);
    exec.replace(QLatin1Char('%'), QStringLiteral("%%"));
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Tolvane\n"
                          "Comment=Keeps Tolvane in the tray so that alarms ring\n"
                          "Exec=%1 --background\n"
                          "Icon=com.quorvel.tolvane\n"
                          "Terminal=false\n"
                          "NoDisplay=true\n"
                          "X-GNOME-Autostart-enabled=true\n")
        .arg(exec);
}

bool Autostart::setEnabled(bool enabled, QString* error) const
{
    const QString path = entryPath();
    if (!enabled) {
        QFile entry(path);
        if (!entry.exists() || entry.remove())
            return true;
        if (error)
            *error = entry.errorString();
        return false;
    }
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        if (error)
            *error = QStringLiteral("cannot create %1").arg(QFileInfo(path).absolutePath());
        return false;
    }
    QSaveFile entry(path);
    if (!entry.open(QIODevice::WriteOnly) || entry.write(entryText().toUtf8()) < 0 || !entry.commit()) {
        if (error)
            *error = entry.errorString();
        return false;
    }
    return true;
}
