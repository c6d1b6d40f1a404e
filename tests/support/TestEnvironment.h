#pragma once

#include <QString>
#include <QStringList>

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

// The program copies every exchange with the backend to standard output, where the test's own
// report goes too: a failing check would drown in them. From here on standard output goes to a
// file in the temporary directory, and the returned arguments (argv with "-o" added unless it has
// one) have QtTest report on the original standard output.
QStringList reportApartFromStandardOutput(int argc, char* argv[]);

} // namespace TestEnvironment
