#pragma once

#include <QString>

// Values fixed when Tolvane is built; an environment variable of the same name overrides each
// at run time (TOLVANE_BACKEND_BASE_URL, TOLVANE_SUPPORT_EMAIL).
namespace BuildSettings {

QString backendBaseURL();
QString supportEmail();
QString version();

} // namespace BuildSettings
