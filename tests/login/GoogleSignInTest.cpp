#include "login/GoogleAuthTokenProvider.h"
#include "login/GoogleSignInRepositoryError.h"
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
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/http/AccountsBackend.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/identity/ScriptedBrowser.h"

#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString clientID = QStringLiteral("tolvane-desktop-test-client");

class Profile final : public GoogleProfileRepresentable {
public:
    Profile(std::optional<QString> given, std::optional<QString> family)
        : m_given(std::move(given))
        , m_family(std::move(family))
    {
    }
    std::optional<QString> givenName() const override { return m_given; }
    std::optional<QString> familyName() const override { return m_family; }
    QString name() const override { return QStringLiteral("Ada Lovelace"); }
    QString email() const override { return QStringLiteral("ada@example.org"); }

private:
    std::optional<QString> m_given;
    std::optional<QString> m_family;
};

class User final : public GoogleUserRepresentable {
public:
    User(std::optional<QString> id, std::shared_ptr<const GoogleProfileRepresentable> profile)
        : m_id(std::move(id))
        , m_profile(std::move(profile))
    {
    }
    std::optional<QString> userID() const override { return m_id; }
    std::shared_ptr<const GoogleProfileRepresentable> profile() const override { return m_profile; }

private:
    std::optional<QString> m_id;
    std::shared_ptr<const GoogleProfileRepresentable> m_profile;
};

class CountingSession final : public GoogleAuthSession {
public:
    std::optional<QString> idToken() override
    {
        ++calls;
        return QStringLiteral("never");
    }
    int calls = 0;
};

// The backend's id for a provider's subject.
QUuid backendId(const QString& subject)
{
    return QUuid::createUuidV5(QUuid(), subject);
}

} // namespace

class GoogleSignInTest : public QObject {
    Q_OBJECT

private:
    std::shared_ptr<SettableClock> m_clock;
    std::shared_ptr<SecretServiceKeychain> m_keychain;
    std::unique_ptr<LocalIdentityProvider> m_provider;
    std::unique_ptr<FakeBackend> m_backend;
    std::unique_ptr<AccountsBackend> m_accounts;
    std::shared_ptr<ScriptedBrowser> m_browser;
    std::unique_ptr<GIDSignIn> m_client;
    std::unique_ptr<QTemporaryDir> m_directory;

    APIClient apiClient() const
    {
        return APIClient(
            m_backend->baseURL(), std::make_shared<GoogleAuthTokenProvider>(*m_client), UrlSession::shared(), false);
    }

    LoginApplication loginApplication() const
    {
        return {std::make_shared<LocalUserRepositoryImpl>(
                    UserDatabase {UserDefaults(m_directory->filePath(QStringLiteral("Tolvane.conf")))}),
            std::make_shared<GoogleSignInRepositoryImpl>(
                *m_client, std::make_shared<LiveGoogleSignInPerforming>(*m_client)),
            std::make_shared<RemoteUserRegistrationRepositoryImpl>(apiClient())};
    }

    // A new start of the program, over the same keyring and provider.
    std::unique_ptr<GIDSignIn> restartedClient() const
    {
        auto restarted
            = std::make_unique<GIDSignIn>(GIDSignInServices {m_keychain, std::make_shared<SystemSecureRandom>(),
                m_clock, std::make_shared<ScriptedBrowser>(ScriptedBrowser::Behaviour::refuseToOpen),
                UrlSession::shared(), m_provider->endpoints()});
        restarted->setConfiguration(GIDConfiguration(clientID));
        return restarted;
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("TOLVANE_SESSION_ROOT"))
            QSKIP("run inside scripts/with-desktop-session");
    }

    void init()
    {
        m_clock = std::make_shared<SettableClock>(QDateTime::currentDateTimeUtc());
        m_keychain = std::make_shared<SecretServiceKeychain>();
        m_keychain->remove(GIDSessionStore::service, clientID);
        m_provider = std::make_unique<LocalIdentityProvider>(clientID, QString(), m_clock);
        m_backend = std::make_unique<FakeBackend>();
        m_accounts = std::make_unique<AccountsBackend>(*m_backend);
        // Whatever token the provider issues, the backend takes as its subject's bearer.
        m_provider->onIdTokenIssued([backend = m_backend.get()](const QString& token, const QString& subject) {
            backend->acceptToken(token, backendId(subject));
        });
        m_browser = std::make_shared<ScriptedBrowser>();
        m_client = std::make_unique<GIDSignIn>(GIDSignInServices {m_keychain, std::make_shared<SystemSecureRandom>(),
            m_clock, m_browser, UrlSession::shared(), m_provider->endpoints()});
        m_client->setConfiguration(GIDConfiguration(clientID));
        m_directory = std::make_unique<QTemporaryDir>();
    }

    void cleanup() { m_browser->waitUntilDone(); }

    void shouldMakeAUserEntityOfTheGoogleProfile()
    {
        const auto full = std::make_shared<Profile>(QStringLiteral("Ada"), QStringLiteral("Lovelace"));
        QCOMPARE(GoogleSignInRepositoryImpl::userEntity(User(QStringLiteral("1082"), full)),
            (UserEntity {QStringLiteral("1082"), QStringLiteral("Ada"), QStringLiteral("Lovelace"),
                QStringLiteral("ada@example.org"), true}));

        const UserEntity sparse = GoogleSignInRepositoryImpl::userEntity(
            User(std::nullopt, std::make_shared<Profile>(std::nullopt, std::nullopt)));
        QCOMPARE(sparse.usrFirstName, QStringLiteral("Ada Lovelace"));
        QCOMPARE(sparse.usrLastName, QString());
        QVERIFY(!QUuid::fromString(sparse.usrId).isNull());

        try {
            GoogleSignInRepositoryImpl::userEntity(User(QStringLiteral("1082"), nullptr));
            QFAIL("a user without a profile was accepted");
        } catch (const GoogleSignInRepositoryError& error) {
            QCOMPARE(error.kind(), GoogleSignInRepositoryError::Case::missingProfile);
            QCOMPARE(LoginApplication::errorChainText(error),
                QStringLiteral("The operation couldn\u2019t be completed. (GoogleSignInRepositoryError error 0.) "
                               "(domain: GoogleSignInRepositoryError, code: 0)"));
        }
    }

    void shouldRefuseATokenWhenNobodyIsSignedIn()
    {
        auto session = std::make_shared<CountingSession>();
        GoogleAuthTokenProvider provider(*m_client, session);
        try {
            provider.token();
            QFAIL("a token without a signed-in user");
        } catch (const GoogleSignInRepositoryError& error) {
            QCOMPARE(error.kind(), GoogleSignInRepositoryError::Case::notSignedIn);
        }
        QCOMPARE(session->calls, 0);

        const SupportApplication support {std::make_shared<RemoteSupportRepositoryImpl>(apiClient())};
        QCOMPARE(
            support.sendSupportMessage(QStringLiteral("Hello")).infrastructureMessage, QStringLiteral("no autorizado"));
        QVERIFY(m_backend->requests().isEmpty());
        QCOMPARE(m_provider->refreshes(), 0);
    }

    void shouldSignInRegisterAndCarryTheIdTokenOnEveryRequest()
    {
        const LoginApplication login = loginApplication();
        const SupportApplication support {std::make_shared<RemoteSupportRepositoryImpl>(apiClient())};

        const LoginResultEntity signedIn = login.signInWithGoogle(nullptr);

        QVERIFY2(signedIn.result, qPrintable(signedIn.firstMessage().value_or(QString())));
        const QUuid userId = backendId(QStringLiteral("108234567890123456789"));
        const UserEntity expected {userId.toString(QUuid::WithoutBraces).toUpper(), QStringLiteral("Ada"),
            QStringLiteral("Lovelace"), QStringLiteral("ada@example.org"), true};
        QCOMPARE(*login.getCurrentUser().dataAs<UserEntity>(), expected);
        QVERIFY(m_accounts->user(userId));
        const QString firstToken = m_provider->lastIdToken();
        QCOMPARE(m_backend->requests().last().header("Authorization"), "Bearer " + firstToken.toLatin1());

        // An hour later the token is renewed on the way to the next request.
        m_clock->advance(3600);
        QVERIFY(support.sendSupportMessage(QStringLiteral("It works.")).result);
        QCOMPARE(m_provider->refreshes(), 1);
        const QString renewed = m_provider->lastIdToken();
        QVERIFY(renewed != firstToken);
        QCOMPARE(m_backend->requests().last().header("Authorization"), "Bearer " + renewed.toLatin1());
        QCOMPARE(m_accounts->supportMessages().first().userId, userId);

        // A new start finds the session in the keyring and goes on with it.
        const auto restarted = restartedClient();
        GoogleSignInRepositoryImpl(*restarted, std::make_shared<LiveGoogleSignInPerforming>(*restarted))
            .restorePreviousSignIn();
        QCOMPARE(GoogleAuthTokenProvider(*restarted).token(), renewed);

        QVERIFY(login.signOut().result);
        QCOMPARE(login.getCurrentUser().domainMessage, QStringLiteral("No user is registered yet"));
        QCOMPARE(m_keychain->copyMatching(GIDSessionStore::service, clientID).status, KeychainStatus::itemNotFound);
        const qsizetype before = m_backend->requests().size();
        QCOMPARE(support.sendSupportMessage(QStringLiteral("Still there?")).infrastructureMessage,
            QStringLiteral("no autorizado"));
        QCOMPARE(m_backend->requests().size(), before);
    }

    void shouldSignOutOfGoogleWhenTheBackendRefusesTheRegistration()
    {
        const LoginApplication login = loginApplication();
        m_backend->enqueue(FakeResponse::json(500, QJsonObject {}), "POST", QStringLiteral("/v0/users"));

        const LoginResultEntity result = login.signInWithGoogle(nullptr);

        QVERIFY(!result.result);
        QCOMPARE(result.infrastructureMessage, QStringLiteral("error del servidor (500)"));
        QCOMPARE(m_provider->codeExchanges(), 1);
        QCOMPARE(login.getCurrentUser().domainMessage, QStringLiteral("No user is registered yet"));
        QVERIFY(!m_client->currentUser());
        QCOMPARE(m_keychain->copyMatching(GIDSessionStore::service, clientID).status, KeychainStatus::itemNotFound);
        // The next start finds no Google session to go on with either.
        const auto restarted = restartedClient();
        QVERIFY_THROWS_EXCEPTION(DescribedError, restarted->restorePreviousSignIn());
        QVERIFY(!restarted->currentUser());

        // Trying again once the backend is back signs in and registers as usual.
        m_browser->waitUntilDone();
        QVERIFY(login.signInWithGoogle(nullptr).result);
        QVERIFY(m_client->currentUser());
        QCOMPARE(m_keychain->copyMatching(GIDSessionStore::service, clientID).status, KeychainStatus::success);
    }
};

TOLVANE_TEST_MAIN(GoogleSignInTest)
#include "GoogleSignInTest.moc"
