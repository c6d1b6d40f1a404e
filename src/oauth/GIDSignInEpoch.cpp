#include "oauth/GIDSignInEpoch.h"

GIDSignInEpoch::Epoch GIDSignInEpoch::current() const
{
    const QMutexLocker locker(&m_mutex);
    return m_epoch;
}

bool GIDSignInEpoch::whileCurrent(Epoch epoch, const std::function<void()>& keep)
{
    const QMutexLocker locker(&m_mutex);
    if (epoch != m_epoch)
        return false;
    keep();
    return true;
}

void GIDSignInEpoch::end(const std::function<void()>& forget)
{
    const QMutexLocker locker(&m_mutex);
    ++m_epoch;
    forget();
}
