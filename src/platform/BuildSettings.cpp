#include "platform/BuildSettings.h"

#include <QByteArray>

namespace {

QString setting(const char* name, const char* built)
{
    const QByteArray overridden = qgetenv(name);
    return QString::fromUtf8(overridden.isEmpty() ? QByteArray(built) : overridden);
}

} // namespace

namespace BuildSettings {

QString backendBaseURL()
{
    return setting("TOLVANE_BACKEND_BASE_URL", TOLVANE_BACKEND_BASE_URL);
}

QString supportEmail()
{
    return setting("TOLVANE_SUPPORT_EMAIL", TOLVANE_SUPPORT_EMAIL);
}

QString version()
{
    return QStringLiteral(TOLVANE_VERSION);
}

} // namespace BuildSettings
