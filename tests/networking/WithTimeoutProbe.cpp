// Calls withTimeout with the limit given on the command line: exits 0 when the operation won the
// race, 3 when the deadline did.
#include "networking/WithTimeout.h"

#include <cstdlib>

int main(int argc, char* argv[])
{
    if (argc != 2)
        return 2;
    const double seconds = std::strtod(argv[1], nullptr);
    try {
        return withTimeout(seconds, [] { return 0; });
    } catch (const TimeoutError&) {
        return 3;
    }
}
