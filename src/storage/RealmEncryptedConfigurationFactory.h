#pragma once

#include "platform/Keychain.h"
#include "platform/ResultEntity.h"
#include "platform/SecureRandom.h"
#include "storage/RealmConfiguration.h"
#include "storage/StoreFolderLock.h"

#include <memory>
#include <optional>

// Builds the configuration of a named store: its file "<name>.realm" beside the default store
// file, and its 64-byte key from the keychain item (service = name, account "RealmEncryptionKey"),
// made and saved on first use.
class RealmEncryptedConfigurationFactory {
public:
    static inline const QString keychainAccount = QStringLiteral("RealmEncryptionKey");
    static constexpr qsizetype keyLength = 64;

    RealmEncryptedConfigurationFactory(std::shared_ptr<Keychain> keychain, std::shared_ptr<SecureRandom> random,
        RealmConfiguration defaultConfiguration);

    // Given to every configuration made from here on: what runs before a store is migrated.
    void setBeforeMigration(RealmBeforeMigrationBlock beforeMigration)
    {
        m_beforeMigration = std::move(beforeMigration);
    }

    // Given to every configuration made from here on: who is told that a store is migrating.
    void setMigrationWatch(RealmMigrationWatch watch) { m_migrationWatch = std::move(watch); }

    // On success data holds the RealmConfiguration; on failure infrastructureMessage says why.
    ResultEntity makeConfiguration(const QString& name, quint64 schemaVersion, RealmMigrationBlock migrationBlock,
        QList<RealmObjectType> objectTypes) const;

private:
    struct KeyOutcome {
        QByteArray key;
        QString failure;
    };
    KeyOutcome encryptionKey(const QString& name) const;
    KeyOutcome storedKey(const QString& name) const;
    std::optional<StoreFolderLock> lockFolder() const;

    std::shared_ptr<Keychain> m_keychain;
    std::shared_ptr<SecureRandom> m_random;
    RealmConfiguration m_defaultConfiguration;
    RealmBeforeMigrationBlock m_beforeMigration;
    RealmMigrationWatch m_migrationWatch;
};
