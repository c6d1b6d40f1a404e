#include "platform/SecretServiceKeychain.h"
#include "support/TestMain.h"

namespace {

const QString service = QStringLiteral("Tolvane.KeychainTest");
const QString account = QStringLiteral("RealmEncryptionKey");

} // namespace

class KeychainTest : public QObject {
    Q_OBJECT

    SecretServiceKeychain keychain;

private Q_SLOTS:
    void init()
    {
        keychain.remove(service, account);
        keychain.remove(service, QStringLiteral("other"));
        keychain.remove(QStringLiteral("Tolvane.Other"), account);
    }

    void shouldKeepBinaryValuesWhole()
    {
        QByteArray key(64, '\0');
        for (int i = 0; i < key.size(); ++i)
            key[i] = char(255 - i * 4);

        QCOMPARE(keychain.add(service, account, key), KeychainStatus::success);

        const KeychainLookup found = keychain.copyMatching(service, account);
        QCOMPARE(found.status, KeychainStatus::success);
        QCOMPARE(found.data, key);
    }

    void shouldAnswerNotFoundForAMissingItem()
    {
        const KeychainLookup missing = keychain.copyMatching(service, account);
        QCOMPARE(missing.status, KeychainStatus::itemNotFound);
        QCOMPARE(missing.data, std::nullopt);
        QCOMPARE(keychain.remove(service, account), KeychainStatus::itemNotFound);
    }

    void shouldTellItemsApartByServiceAndAccount()
    {
        keychain.add(service, account, "first");
        keychain.add(service, QStringLiteral("other"), "second");
        keychain.add(QStringLiteral("Tolvane.Other"), account, "third");

        QCOMPARE(keychain.copyMatching(service, account).data, QByteArray("first"));
        QCOMPARE(keychain.copyMatching(service, QStringLiteral("other")).data, QByteArray("second"));
        QCOMPARE(keychain.copyMatching(QStringLiteral("Tolvane.Other"), account).data, QByteArray("third"));

        QCOMPARE(keychain.remove(service, account), KeychainStatus::success);
        QCOMPARE(keychain.copyMatching(service, account).status, KeychainStatus::itemNotFound);
        QCOMPARE(keychain.copyMatching(service, QStringLiteral("other")).data, QByteArray("second"));
    }

    void shouldReplaceTheValueOfTheSameItem()
    {
        keychain.add(service, account, "old");
        keychain.add(service, account, "new");
        QCOMPARE(keychain.copyMatching(service, account).data, QByteArray("new"));
        QCOMPARE(keychain.remove(service, account), KeychainStatus::success);
        QCOMPARE(keychain.copyMatching(service, account).status, KeychainStatus::itemNotFound);
    }
};

TOLVANE_TEST_MAIN(KeychainTest)
#include "KeychainTest.moc"
