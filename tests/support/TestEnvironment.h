#pragma once

#include <QString>

namespace TestEnvironment {

// The zone every test runs in: five hours behind UTC all year, so a test that confuses local
// and UTC days fails without depending on daylight-saving dates.
inline constexpr const char* timeZone = "America/Bogota";

void pinBeforeApplication();
void pinAfterApplication();
void pinWidgetStyle();

} // namespace TestEnvironment
