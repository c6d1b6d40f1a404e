#pragma once

#include "oauth/GIDSession.h"

#include <memory>

class Keychain;

// The signed-in session as one keyring item of its own, per OAuth client: tokens are credentials
// and never go to a file or the settings.
class GIDSessionStore {
public:
    static inline const QString service = QStringLiteral("com.quorvel.tolvane.GoogleSignIn");

    GIDSessionStore(std::shared_ptr<Keychain> keychain, QString clientID);

    // Throws hasNoAuthInKeychain when nothing (usable) is stored, keychain when the keyring fails.
    GIDSession load() const;
    // Throws keychain when the keyring refuses the item.
    void save(const GIDSession& session) const;
    // Forgets the item; false when the keyring failed (an absent item is not a failure).
    bool remove() const;

private:
    std::shared_ptr<Keychain> m_keychain;
    QString m_account;
};
