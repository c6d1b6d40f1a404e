#include "oauth/GIDConfiguration.h"

#ifndef TOLVANE_GOOGLE_CLIENT_ID
#define TOLVANE_GOOGLE_CLIENT_ID ""
#endif
#ifndef TOLVANE_GOOGLE_CLIENT_SECRET
#define TOLVANE_GOOGLE_CLIENT_SECRET ""
#endif

namespace {

QString setting(const char* name, const char* built)
{
    if (qEnvironmentVariableIsSet(name))
        return qEnvironmentVariable(name).trimmed();
    return QString::fromUtf8(built).trimmed();
}

} // namespace

std::optional<GIDConfiguration> GIDConfiguration::fromBuildSettings()
{
    const QString clientID = setting("TOLVANE_GOOGLE_CLIENT_ID", TOLVANE_GOOGLE_CLIENT_ID);
    if (clientID.isEmpty())
        return std::nullopt;
    return GIDConfiguration(clientID, setting("TOLVANE_GOOGLE_CLIENT_SECRET", TOLVANE_GOOGLE_CLIENT_SECRET));
}
