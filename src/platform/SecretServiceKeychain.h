#pragma once

#include "platform/Keychain.h"

// Keychain items as Secret Service items (gnome-keyring, KWallet, KeePassXC) through libsecret.
// Items use the schema "com.quorvel.tolvane.GenericPassword" with the attributes service and
// account, and a binary secret.
//
// A locked default collection answers lookups with "nothing found" when no unlock prompt can be
// shown. Reporting that as itemNotFound would make callers create a new key and lose the data
// encrypted with the old one, so a locked collection is reported as interactionNotAllowed.
class SecretServiceKeychain final : public Keychain {
public:
    KeychainLookup copyMatching(const QString& service, const QString& account) override;
    int add(const QString& service, const QString& account, const QByteArray& data) override;
    int remove(const QString& service, const QString& account) override;
};
