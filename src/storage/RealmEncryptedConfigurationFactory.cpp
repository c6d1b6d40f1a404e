#include "storage/RealmEncryptedConfigurationFactory.h"

#include "platform/Logging.h"
#include "storage/RealmError.h"

#include <QDir>
#include <QFileInfo>

RealmEncryptedConfigurationFactory::RealmEncryptedConfigurationFactory(
    std::shared_ptr<Keychain> keychain, std::shared_ptr<SecureRandom> random, RealmConfiguration defaultConfiguration)
    : m_keychain(std::move(keychain))
    , m_random(std::move(random))
    , m_defaultConfiguration(std::move(defaultConfiguration))
{
}

ResultEntity RealmEncryptedConfigurationFactory::makeConfiguration(const QString& name, quint64 schemaVersion,
    RealmMigrationBlock migrationBlock, QList<RealmObjectType> objectTypes) const
{
    KeyOutcome key = encryptionKey(name);
    if (!key.failure.isEmpty())
        return ResultEntity::infrastructureFailure(key.failure);

    RealmConfiguration configuration;
    if (m_defaultConfiguration.fileURL) {
        configuration.fileURL
            = QFileInfo(*m_defaultConfiguration.fileURL).dir().filePath(name + QStringLiteral(".realm"));
    }
    configuration.encryptionKey = std::move(key.key);
    configuration.readOnly = false;
    configuration.schemaVersion = schemaVersion;
    configuration.migrationBlock = std::move(migrationBlock);
    configuration.beforeMigration = m_beforeMigration;
    configuration.migrationWatch = m_migrationWatch;
    configuration.deleteRealmIfMigrationNeeded = false;
    configuration.objectTypes = std::move(objectTypes);
    return ResultEntity::success(configuration);
}

// The stored key when there is one; a new one only when the keychain says for certain that
// there is none. Any other answer may hide a key that still opens an existing file.
RealmEncryptedConfigurationFactory::KeyOutcome RealmEncryptedConfigurationFactory::encryptionKey(
    const QString& name) const
{
    KeyOutcome stored = storedKey(name);
    if (!stored.key.isEmpty() || !stored.failure.isEmpty())
        return stored;

    // Two processes starting together would each make a key, and the one saved last would
    // orphan the file the other writes. Under the lock the second finds the first's key.
    const std::optional<StoreFolderLock> lock = lockFolder();
    stored = storedKey(name);
    if (!stored.key.isEmpty() || !stored.failure.isEmpty())
        return stored;

    QByteArray key(keyLength, '\0');
    if (m_random->copyBytes(key) != 0)
        return {{}, QStringLiteral("Failed to generate the encryption key")};

    m_keychain->remove(name, keychainAccount);
    if (const int status = m_keychain->add(name, keychainAccount, key); status != KeychainStatus::success) {
        qCWarning(lcStorage) << "saving the key of" << name << "failed with status" << status;
        return {{}, QStringLiteral("Failed to save the encryption key to Keychain")};
    }
    // The key used is always the one the keychain holds.
    stored = storedKey(name);
    if (stored.key.isEmpty() && stored.failure.isEmpty())
        return {{}, QStringLiteral("Failed to save the encryption key to Keychain")};
    return stored;
}

// The key when the keychain has one, a failure when it cannot tell, both empty when there is none.
RealmEncryptedConfigurationFactory::KeyOutcome RealmEncryptedConfigurationFactory::storedKey(const QString& name) const
{
    const KeychainLookup lookup = m_keychain->copyMatching(name, keychainAccount);
    if (lookup.status == KeychainStatus::success && lookup.data)
        return {*lookup.data, {}};
    if (lookup.status != KeychainStatus::itemNotFound) {
        return {{},
            QStringLiteral("Keychain lookup failed with status %1; refusing to regenerate the encryption key")
                .arg(lookup.status)};
    }
    return {};
}

std::optional<StoreFolderLock> RealmEncryptedConfigurationFactory::lockFolder() const
{
    if (!m_defaultConfiguration.fileURL)
        return std::nullopt;
    try {
        return std::optional<StoreFolderLock>(
            std::in_place, StoreFolderLock::folderOf(*m_defaultConfiguration.fileURL));
    } catch (const RealmError& error) {
        qCWarning(lcStorage) << "making a key without the stores' lock:" << error.localizedDescription();
        return std::nullopt;
    }
}
