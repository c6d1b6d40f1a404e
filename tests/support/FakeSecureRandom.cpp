#include "support/FakeSecureRandom.h"

int FakeSecureRandom::copyBytes(QByteArray& buffer)
{
    if (status != 0)
        return status;
    for (char& byte : buffer)
        byte = m_next++;
    return 0;
}
