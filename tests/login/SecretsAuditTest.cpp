// Where secrets must never end up. Signs in with Google against a local identity provider, talks
// to the backend with the ID token, renews it, fails a request on purpose and opens the encrypted
// stores, all with the network log and the information console on; then looks for the ID tokens,
// the refresh token and the stores' key in everything those paths leave behind: the network log,
// the console, standard output, the program's log messages, every file under the session's home
// (preferences, QSettings, logs) and the keyring items' labels and attributes. Only the secret
// value of a keyring item may hold one.
#include "login/GoogleAuthTokenProvider.h"
#include "login/GoogleSignInRepositoryImpl.h"
#include "login/LocalUserRepositoryImpl.h"
#include "login/LoginApplication.h"
#include "login/RemoteSupportRepositoryImpl.h"
#include "login/RemoteUserRegistrationRepositoryImpl.h"
#include "login/SupportApplication.h"
#include "oauth/GIDSessionStore.h"
#include "oauth/GIDSignIn.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "screens/common/ErrorConsoleStore.h"
#include "screens/settings/SupportController.h"
#include "storage/RealmEncryptedConfigurationFactory.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/http/AccountsBackend.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/identity/ScriptedBrowser.h"
#include "tasks/database/TasksDatabase.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonObject>
#include <QMutex>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <libsecret/secret.h>
#include <unistd.h>

namespace {

const QString clientID = QStringLiteral("tolvane-secrets-audit-client");

QUuid backendId(const QString& subject)
{
    return QUuid::createUuidV5(QUuid(), subject);
}

// Every Qt message the program emits while the audit runs, at the levels enabled by default.
QMutex messagesMutex;
QString messages;
QtMessageHandler previousHandler = nullptr;

void recordMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    {
        const QMutexLocker locker(&messagesMutex);
        messages += text + QLatin1Char('\n');
    }
    previousHandler(type, context, text);
}

// Standard output goes to a file while it is alive, so that what the program prints can be read.
class CapturedStandardOutput {
public:
    explicit CapturedStandardOutput(const QString& path)
        : m_path(path)
    {
        std::fflush(stdout);
        m_saved = dup(STDOUT_FILENO);
        std::FILE* file = std::fopen(QFile::encodeName(path).constData(), "w");
        dup2(fileno(file), STDOUT_FILENO);
        std::fclose(file);
    }
    ~CapturedStandardOutput() { restore(); }

    QByteArray take()
    {
        restore();
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    void restore()
    {
        if (m_saved < 0)
            return;
        std::fflush(stdout);
        dup2(m_saved, STDOUT_FILENO);
        close(m_saved);
        m_saved = -1;
    }

    QString m_path;
    int m_saved = -1;
};

// The forms a secret could be written in: as it is, and for binary ones in hex and base64.
QList<QByteArray> formsOf(const QByteArray& secret, bool binary)
{
    if (!binary)
        return {secret};
    return {secret, secret.toHex(), secret.toHex().toUpper(), secret.toBase64(),
        secret.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals)};
}

} // namespace

class SecretsAuditTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("TOLVANE_SESSION_ROOT"))
            QSKIP("run inside scripts/with-desktop-session");
    }

    void shouldKeepTokensAndKeysOutOfLogsFilesAndKeyringAttributes()
    {
        QTemporaryDir folder;
        const auto clock = std::make_shared<SettableClock>(QDateTime::currentDateTimeUtc());
        const auto keychain = std::make_shared<SecretServiceKeychain>();
        keychain->remove(GIDSessionStore::service, clientID);
        keychain->remove(TasksDatabaseSchema::name, RealmEncryptedConfigurationFactory::keychainAccount);
        LocalIdentityProvider provider(clientID, QString(), clock);
        FakeBackend backend;
        AccountsBackend accounts(backend);
        QStringList idTokens;
        provider.onIdTokenIssued([&backend](const QString& token, const QString& subject) {
            backend.acceptToken(token, backendId(subject));
        });
        auto browser = std::make_shared<ScriptedBrowser>();
        GIDSignIn client(GIDSignInServices {keychain, std::make_shared<SystemSecureRandom>(), clock, browser,
            UrlSession::shared(), provider.endpoints()});
        client.setConfiguration(GIDConfiguration(clientID));

        // The program's own places: preferences, the network log, the information console.
        const QString networkLog = folder.filePath(QStringLiteral("network.log"));
        const NetworkLogger logger(true, networkLog, clock);
        UserDefaults defaults(folder.filePath(QStringLiteral("Tolvane.conf")));
        defaults.setValue(ErrorConsoleStore::isEnabledKey, true);
        ErrorConsoleStore console(defaults, clock);
        const APIClient api(
            backend.baseURL(), std::make_shared<GoogleAuthTokenProvider>(client), UrlSession::shared(), logger);
        const LoginApplication login {std::make_shared<LocalUserRepositoryImpl>(UserDatabase {defaults}),
            std::make_shared<GoogleSignInRepositoryImpl>(client, std::make_shared<LiveGoogleSignInPerforming>(client)),
            std::make_shared<RemoteUserRegistrationRepositoryImpl>(api)};
        const SupportController support(
            SupportApplication {std::make_shared<RemoteSupportRepositoryImpl>(api)}, console);

        previousHandler = qInstallMessageHandler(recordMessage);
        CapturedStandardOutput output(folder.filePath(QStringLiteral("stdout")));

        const LoginResultEntity signedIn = login.signInWithGoogle(nullptr);
        QVERIFY2(signedIn.result, qPrintable(signedIn.firstMessage().value_or(QString())));
        idTokens.append(provider.lastIdToken());
        QObject receiver;
        std::optional<bool> sent;
        support.sendMessage(&receiver, QStringLiteral("First"), [&](bool ok) { sent = ok; });
        QTRY_VERIFY_WITH_TIMEOUT(sent.has_value(), 30000);
        QVERIFY(*sent);

        // An hour later the token is renewed with the refresh token; then the backend fails.
        clock->advance(3600);
        backend.enqueue(FakeResponse::json(500, QJsonObject {{QStringLiteral("error"), QStringLiteral("down")}}),
            "POST", QStringLiteral("/v0/support"));
        sent.reset();
        support.sendMessage(&receiver, QStringLiteral("Second"), [&](bool ok) { sent = ok; });
        QTRY_VERIFY_WITH_TIMEOUT(sent.has_value(), 30000);
        QVERIFY(!*sent);
        QCOMPARE(provider.refreshes(), 1);
        idTokens.append(provider.lastIdToken());

        // The encrypted store: its key is made, kept in the keyring and used.
        RealmConfiguration storeDefaults;
        storeDefaults.fileURL = folder.filePath(QStringLiteral("default.realm"));
        const RealmEncryptedConfigurationFactory factory(
            keychain, std::make_shared<SystemSecureRandom>(), storeDefaults);
        const ResultEntity made = TasksDatabase::make(factory);
        QVERIFY(made.result);
        QVERIFY(LocalTaskRepositoryImpl(*made.dataAs<TasksDatabase>())
                    .create(TaskEntity {.talId = QUuid::createUuid(), .tasTitle = QStringLiteral("Audit")})
                    .result);

        const QByteArray printed = output.take();
        qInstallMessageHandler(previousHandler);

        const QStringList refreshTokens = provider.refreshTokens();
        const std::optional<QByteArray> stored
            = keychain->copyMatching(TasksDatabaseSchema::name, RealmEncryptedConfigurationFactory::keychainAccount)
                  .data;
        QVERIFY(!refreshTokens.isEmpty());
        QVERIFY(stored && stored->size() >= 16);
        const QByteArray key = *stored;
        QList<std::pair<QString, QByteArray>> secrets;
        for (const QString& token : std::as_const(idTokens)) {
            secrets.append({QStringLiteral("an ID token"), token.toLatin1()});
            // The signature alone is as good as the token to nobody, but the payload and header
            // together are; the signature is what cannot be guessed, so it is what is looked for.
            secrets.append({QStringLiteral("an ID token's signature"), token.section(QLatin1Char('.'), 2).toLatin1()});
        }
        for (const QString& token : refreshTokens)
            secrets.append({QStringLiteral("a refresh token"), token.toLatin1()});
        for (const QByteArray& form : formsOf(key, true))
            secrets.append({QStringLiteral("the store's key"), form});

        QList<std::pair<QString, QByteArray>> places;
        QFile log(networkLog);
        QVERIFY(log.open(QIODevice::ReadOnly));
        places.append({QStringLiteral("the network log"), log.readAll()});
        QVERIFY(places.constLast().second.contains("endpoint: POST"));
        places.append({QStringLiteral("the information console"), console.consoleText().toUtf8()});
        QVERIFY(places.constLast().second.contains(SupportController::sendAction.toUtf8()));
        places.append({QStringLiteral("standard output"), printed});
        QVERIFY(!printed.isEmpty());
        {
            const QMutexLocker locker(&messagesMutex);
            places.append({QStringLiteral("the log messages"), messages.toUtf8()});
        }
        // Every file the test or the program wrote: preferences, QSettings, the store, logs.
        for (const QString& root : {folder.path(), qEnvironmentVariable("HOME")}) {
            QDirIterator files(root, QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                QFile file(files.next());
                if (file.size() < 64 * 1024 * 1024 && file.open(QIODevice::ReadOnly))
                    places.append({file.fileName(), file.readAll()});
            }
        }
        places.append({QStringLiteral("the keyring items' labels and attributes"), keyringAttributes()});
        QVERIFY(places.constLast().second.contains(clientID.toUtf8()));

        for (const auto& [place, content] : std::as_const(places)) {
            for (const auto& [what, secret] : std::as_const(secrets))
                QVERIFY2(!content.contains(secret), qPrintable(QStringLiteral("%1 in %2").arg(what, place)));
        }
    }

private:
    // The label and attributes of every item in the session's keyring, without their secrets.
    static QByteArray keyringAttributes()
    {
        GError* error = nullptr;
        SecretService* service = secret_service_get_sync(SECRET_SERVICE_LOAD_COLLECTIONS, nullptr, &error);
        if (!service) {
            g_clear_error(&error);
            return {};
        }
        QByteArray kept;
        GHashTable* everything = g_hash_table_new(g_str_hash, g_str_equal);
        GList* items = secret_service_search_sync(
            service, nullptr, everything, SecretSearchFlags(SECRET_SEARCH_ALL | SECRET_SEARCH_UNLOCK), nullptr, &error);
        g_clear_error(&error);
        for (GList* entry = items; entry; entry = entry->next) {
            auto* item = SECRET_ITEM(entry->data);
            gchar* label = secret_item_get_label(item);
            kept += QByteArray("label = ") + label + '\n';
            g_free(label);
            GHashTable* attributes = secret_item_get_attributes(item);
            GHashTableIter iterator;
            gpointer name = nullptr;
            gpointer value = nullptr;
            g_hash_table_iter_init(&iterator, attributes);
            while (g_hash_table_iter_next(&iterator, &name, &value))
                kept += QByteArray(static_cast<const char*>(name)) + " = " + static_cast<const char*>(value) + '\n';
            g_hash_table_unref(attributes);
        }
        g_list_free_full(items, g_object_unref);
        g_hash_table_unref(everything);
        g_object_unref(service);
        return kept;
    }
};

TOLVANE_TEST_MAIN(SecretsAuditTest)
#include "SecretsAuditTest.moc"
