#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "storage/RealmDatabaseOpener.h"
#include "storage/StoreFiles.h"
#include "support/TestMain.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TasksDatabase.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>

namespace {

const QString secrets = QStringLiteral("org.freedesktop.secrets");
const QString servicePath = QStringLiteral("/org/freedesktop/secrets");
const QString loginCollection = QStringLiteral("/org/freedesktop/secrets/collection/login");

// A Secret Service "secret": (session, parameters, value, content type).
struct Secret {
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Secret& secret)
{
    argument.beginStructure();
    argument << secret.session << secret.parameters << secret.value << secret.contentType;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Secret& secret)
{
    argument.beginStructure();
    argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    argument.endStructure();
    return argument;
}

QDBusMessage callSecretService(
    const QString& path, const QString& interface, const QString& method, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(secrets, path, interface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

void lockLoginCollection()
{
    const QDBusMessage reply = callSecretService(servicePath, QStringLiteral("org.freedesktop.Secret.Service"),
        QStringLiteral("Lock"), {QVariant::fromValue(QList<QDBusObjectPath> {QDBusObjectPath(loginCollection)})});
    QVERIFY2(reply.type() == QDBusMessage::ReplyMessage, qPrintable(reply.errorMessage()));
}

// gnome-keyring unlocks with the password given directly, so no prompt is needed.
void unlockLoginCollection()
{
    const QDBusMessage session = callSecretService(servicePath, QStringLiteral("org.freedesktop.Secret.Service"),
        QStringLiteral("OpenSession"), {QStringLiteral("plain"), QVariant::fromValue(QDBusVariant(QString()))});
    QVERIFY2(session.type() == QDBusMessage::ReplyMessage, qPrintable(session.errorMessage()));
    const Secret password {session.arguments().at(1).value<QDBusObjectPath>(), {}, qgetenv("TOLVANE_KEYRING_PASSWORD"),
        QStringLiteral("text/plain")};
    const QDBusMessage reply
        = callSecretService(servicePath, QStringLiteral("org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface"),
            QStringLiteral("UnlockWithMasterPassword"),
            {QVariant::fromValue(QDBusObjectPath(loginCollection)), QVariant::fromValue(password)});
    QVERIFY2(reply.type() == QDBusMessage::ReplyMessage, qPrintable(reply.errorMessage()));
}

} // namespace

Q_DECLARE_METATYPE(Secret)

// A locked keyring hides its items; the store must refuse rather than take that for "no key".
class LockedKeyringTest : public QObject {
    Q_OBJECT

    std::shared_ptr<SecretServiceKeychain> keychain = std::make_shared<SecretServiceKeychain>();

    RealmEncryptedConfigurationFactory factory() const
    {
        return RealmEncryptedConfigurationFactory(
            keychain, std::make_shared<SystemSecureRandom>(), RealmConfiguration::defaultConfiguration());
    }

    ResultEntity makeProjectsDatabase() const { return ProjectsDatabase::make(factory()); }

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<Secret>();
        QVERIFY(!qgetenv("TOLVANE_KEYRING_PASSWORD").isEmpty());
    }

    void shouldRefuseAndTouchNeitherTheItemNorTheFile()
    {
        const ResultEntity made = makeProjectsDatabase();
        QVERIFY(made.result);
        const RealmConfiguration configuration = made.dataAs<ProjectsDatabase>()->configuration;
        StoreFiles::addProject(configuration, QStringLiteral("Survives the lock"));
        const QByteArray fileBefore = StoreFiles::read(*configuration.fileURL);

        lockLoginCollection();
        const ResultEntity whileLocked = makeProjectsDatabase();
        unlockLoginCollection();

        QVERIFY(!whileLocked.result);
        QCOMPARE(whileLocked.infrastructureMessage,
            QStringLiteral("Keychain lookup failed with status -25308; refusing to regenerate the encryption key"));
        QCOMPARE(StoreFiles::read(*configuration.fileURL), fileBefore);
        const KeychainLookup item
            = keychain->copyMatching(ProjectsDatabaseSchema::name, QStringLiteral("RealmEncryptionKey"));
        QCOMPARE(item.data, configuration.encryptionKey);
        QCOMPARE(StoreFiles::projectNames(configuration), QStringList {QStringLiteral("Survives the lock")});
    }

    void shouldNotMakeAKeyWhileTheKeyringIsLocked()
    {
        // Some keyrings hide the items of a locked collection altogether, so "nothing found"
        // from a locked keyring proves nothing.
        lockLoginCollection();
        const ResultEntity whileLocked = TasksDatabase::make(factory());
        unlockLoginCollection();

        QVERIFY(!whileLocked.result);
        QCOMPARE(whileLocked.infrastructureMessage,
            QStringLiteral("Keychain lookup failed with status -25308; refusing to regenerate the encryption key"));
        QCOMPARE(keychain->copyMatching(TasksDatabaseSchema::name, QStringLiteral("RealmEncryptionKey")).status,
            KeychainStatus::itemNotFound);
    }
};

TOLVANE_TEST_MAIN(LockedKeyringTest)
#include "LockedKeyringTest.moc"
