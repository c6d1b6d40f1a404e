#pragma once

#include "platform/Keychain.h"

#include <QHash>
#include <QMutex>

#include <optional>

// An in-memory keychain. Tests can force the status of each operation and look at the items.
class FakeKeychain final : public Keychain {
public:
    KeychainLookup copyMatching(const QString& service, const QString& account) override;
    int add(const QString& service, const QString& account, const QByteArray& data) override;
    int remove(const QString& service, const QString& account) override;

    // When set, the operation answers this status and changes nothing.
    std::optional<int> lookupStatus;
    std::optional<int> addStatus;
    // A lookup that answers success without a value.
    bool lookupReturnsNoData = false;

    std::optional<QByteArray> item(const QString& service, const QString& account) const;
    void setItem(const QString& service, const QString& account, const QByteArray& data);
    int addCalls = 0;

private:
    mutable QMutex m_mutex;
    QHash<QString, QByteArray> m_items;
};
