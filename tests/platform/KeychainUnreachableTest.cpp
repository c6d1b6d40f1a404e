#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "storage/RealmEncryptedConfigurationFactory.h"
#include "support/TestMain.h"

#include <QDir>
#include <QTemporaryDir>

// Run with a session bus address that leads nowhere.
class KeychainUnreachableTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldReportAFailureRatherThanNotFound()
    {
        SecretServiceKeychain keychain;
        QCOMPARE(keychain.copyMatching(QStringLiteral("Tasks.Projects"), QStringLiteral("RealmEncryptionKey")).status,
            KeychainStatus::notAvailable);
        QCOMPARE(keychain.add(QStringLiteral("Tasks.Projects"), QStringLiteral("RealmEncryptionKey"), "key"),
            KeychainStatus::notAvailable);
    }

    void shouldLeaveAnExistingStoreAlone()
    {
        QTemporaryDir directory;
        const QString file = directory.filePath(QStringLiteral("Tasks.Projects.realm"));
        QFile existing(file);
        QVERIFY(existing.open(QIODevice::WriteOnly));
        existing.write("encrypted bytes");
        existing.close();
        RealmConfiguration defaults;
        defaults.fileURL = directory.filePath(QStringLiteral("default.realm"));
        const RealmEncryptedConfigurationFactory factory(
            std::make_shared<SecretServiceKeychain>(), std::make_shared<SystemSecureRandom>(), defaults);

        const ResultEntity made = factory.makeConfiguration(QStringLiteral("Tasks.Projects"), 1, {}, {});

        QVERIFY(!made.result);
        QCOMPARE(made.infrastructureMessage,
            QStringLiteral("Keychain lookup failed with status -25291; refusing to regenerate the encryption key"));
        QVERIFY(existing.open(QIODevice::ReadOnly));
        QCOMPARE(existing.readAll(), QByteArray("encrypted bytes"));
    }
};

TOLVANE_TEST_MAIN(KeychainUnreachableTest)
#include "KeychainUnreachableTest.moc"
