#pragma once

#include <QString>

namespace TestEnvironment {

// The zone every test runs in: five hours behind UTC all year, so a test that confuses local
// and UTC days fails without depending on daylight-saving dates.
inline constexpr const char* timeZone = "America/Bogota";
// Set in a test's environment, runs it in that zone instead; tests that must hold in several
// zones are registered once per zone with it.
inline constexpr const char* timeZoneOverride = "TOLVANE_TEST_TZ";

void pinBeforeApplication();
void pinAfterApplication();
void pinWidgetStyle();

} // namespace TestEnvironment
