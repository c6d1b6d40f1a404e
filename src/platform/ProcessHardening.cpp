#include "platform/ProcessHardening.h"

#include <sys/prctl.h>
#include <sys/resource.h>

namespace ProcessHardening {

bool disableCoreDumps()
{
    // The limit stops a core file; not dumpable also stops a core handed to a program through
    // core_pattern, which ignores the limit.
    const rlimit none {0, 0};
    const bool limited = ::setrlimit(RLIMIT_CORE, &none) == 0;
    const bool undumpable = ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) == 0;
    return limited && undumpable;
}

} // namespace ProcessHardening
