#include "platform/SystemSecureRandom.h"

#include <cerrno>
#include <sys/random.h>

int SystemSecureRandom::copyBytes(QByteArray& buffer)
{
    qsizetype filled = 0;
    while (filled < buffer.size()) {
        const ssize_t got = getrandom(buffer.data() + filled, size_t(buffer.size() - filled), 0);
        if (got < 0) {
            if (errno == EINTR)
                continue;
            return errno;
        }
        filled += got;
    }
    return 0;
}
