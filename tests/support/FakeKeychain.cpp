#include "support/FakeKeychain.h"

namespace {

QString keyOf(const QString& service, const QString& account)
{
    return service + QLatin1Char('\n') + account;
}

} // namespace

KeychainLookup FakeKeychain::copyMatching(const QString& service, const QString& account)
{
    if (lookupStatus)
        return {*lookupStatus, std::nullopt};
    if (lookupReturnsNoData)
        return {KeychainStatus::success, std::nullopt};
    const std::optional<QByteArray> found = item(service, account);
    return found ? KeychainLookup {KeychainStatus::success, found} : KeychainLookup {};
}

int FakeKeychain::add(const QString& service, const QString& account, const QByteArray& data)
{
    const QMutexLocker locker(&m_mutex);
    ++addCalls;
    if (addStatus)
        return *addStatus;
    if (m_items.contains(keyOf(service, account)))
        return KeychainStatus::duplicateItem;
    m_items.insert(keyOf(service, account), data);
    return KeychainStatus::success;
}

int FakeKeychain::remove(const QString& service, const QString& account)
{
    const QMutexLocker locker(&m_mutex);
    return m_items.remove(keyOf(service, account)) ? KeychainStatus::success : KeychainStatus::itemNotFound;
}

std::optional<QByteArray> FakeKeychain::item(const QString& service, const QString& account) const
{
    const QMutexLocker locker(&m_mutex);
    const auto found = m_items.constFind(keyOf(service, account));
    return found == m_items.cend() ? std::nullopt : std::optional<QByteArray>(*found);
}

void FakeKeychain::setItem(const QString& service, const QString& account, const QByteArray& data)
{
    const QMutexLocker locker(&m_mutex);
    m_items.insert(keyOf(service, account), data);
}
