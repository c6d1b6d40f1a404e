#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Status codes of keychain operations. 0 and itemNotFound are the only two answers that say
// something about the item; every other value is a failure of the keychain itself.
namespace KeychainStatus {
inline constexpr int success = 0;
inline constexpr int itemNotFound = -25300;
inline constexpr int duplicateItem = -25299;
// No Secret Service could be reached (no session bus, or nobody owns the service name).
inline constexpr int notAvailable = -25291;
// The collection is locked and cannot be unlocked without a prompt.
inline constexpr int interactionNotAllowed = -25308;
// Any other failure reported by the Secret Service.
inline constexpr int internalError = -26276;
} // namespace KeychainStatus

struct KeychainLookup {
    int status = KeychainStatus::itemNotFound;
    // Present when the item was found and carried a value.
    std::optional<QByteArray> data;
};

// Generic-password items told apart by service and account.
class Keychain {
public:
    virtual ~Keychain() = default;
    virtual KeychainLookup copyMatching(const QString& service, const QString& account) = 0;
    virtual int add(const QString& service, const QString& account, const QByteArray& data) = 0;
    virtual int remove(const QString& service, const QString& account) = 0;
};
