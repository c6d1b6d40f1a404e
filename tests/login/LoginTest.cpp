#include "login/LocalUserRepositoryImpl.h"
#include "login/LoginApplication.h"
#include "login/RemoteSupportRepositoryImpl.h"
#include "login/RemoteUserRegistrationRepositoryImpl.h"
#include "login/SupportApplication.h"
#include "oauth/GIDSignInError.h"
#include "support/TestMain.h"
#include "support/http/AccountsBackend.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

namespace {

class FixedToken final : public AuthTokenProvider {
public:
    QString token() override { return QString::fromLatin1(FakeBackend::defaultToken); }
};

// Stands in for the browser sign-in: answers a user or throws what the test chose.
class ScriptedSignIn final : public GoogleSignInRepository {
public:
    UserEntity signIn(QObject*) override
    {
        ++signIns;
        if (failure)
            std::rethrow_exception(failure);
        return user;
    }
    bool handle(const QUrl&) override { return false; }
    void signOut() override { ++signOuts; }
    void restorePreviousSignIn() override { }

    UserEntity user {QStringLiteral("108234567890123456789"), QStringLiteral("Ada"), QStringLiteral("Lovelace"),
        QStringLiteral("ada@example.org"), true};
    std::exception_ptr failure;
    int signIns = 0;
    int signOuts = 0;
};

UserEntity localUser(QString first = QStringLiteral("Grace"), QString last = QStringLiteral("Hopper"))
{
    return {QStringLiteral("5C0A37A2-9A55-4E43-A3C5-3E3C4A4B1C11"), std::move(first), std::move(last),
        QStringLiteral("grace@example.org"), false};
}

QString backendUserId()
{
    return FakeBackend::defaultUserId().toString(QUuid::WithoutBraces).toUpper();
}

} // namespace

class LoginTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<FakeBackend> m_backend;
    std::unique_ptr<AccountsBackend> m_accounts;
    std::shared_ptr<ScriptedSignIn> m_signIn;
    UserDatabase m_database {UserDefaults(QString())};

    APIClient client() const
    {
        return APIClient(m_backend->baseURL(), std::make_shared<FixedToken>(), UrlSession::shared(), false);
    }

    LoginApplication application(bool withSignIn = true, bool withRegistration = true) const
    {
        return LoginApplication {std::make_shared<LocalUserRepositoryImpl>(m_database), withSignIn ? m_signIn : nullptr,
            withRegistration ? std::make_shared<RemoteUserRegistrationRepositoryImpl>(client()) : nullptr};
    }

    std::optional<UserEntity> storedUser() const
    {
        const LoginResultEntity loaded = m_database.load();
        return loaded.result ? std::optional<UserEntity>(*loaded.dataAs<UserEntity>()) : std::nullopt;
    }

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_database = UserDatabase {UserDefaults(m_directory->filePath(QStringLiteral("Tolvane.conf")))};
        m_backend = std::make_unique<FakeBackend>();
        m_accounts = std::make_unique<AccountsBackend>(*m_backend);
        m_signIn = std::make_shared<ScriptedSignIn>();
    }

    void shouldKeepOneUserAndReportWhatIsMissingOrBroken()
    {
        const LoginApplication login = application();
        QCOMPARE(login.getCurrentUser().domainMessage, QStringLiteral("No user is registered yet"));
        QVERIFY(login.signOut().result);

        QVERIFY(login.saveUser(localUser()).result);
        QCOMPARE(*login.getCurrentUser().dataAs<UserEntity>(), localUser());
        const QJsonObject stored
            = QJsonDocument::fromJson(m_database.userDefaults.value(UserDatabase::currentUserKey).toString().toUtf8())
                  .object();
        QCOMPARE(stored.keys(),
            (QStringList {QStringLiteral("usrEmail"), QStringLiteral("usrFirstName"), QStringLiteral("usrId"),
                QStringLiteral("usrIsGoogleAccount"), QStringLiteral("usrLastName")}));
        QCOMPARE(stored.value(QStringLiteral("usrIsGoogleAccount")), QJsonValue(false));

        // A broken value is reported, and left for the user to replace.
        m_database.userDefaults.setValue(UserDatabase::currentUserKey, QStringLiteral("{\"usrId\": 7}"));
        const LoginResultEntity broken = login.getCurrentUser();
        QVERIFY(!broken.result);
        QVERIFY(broken.databaseMessage && broken.databaseMessage->contains(QLatin1String("usrId")));
        QVERIFY(m_database.userDefaults.contains(UserDatabase::currentUserKey));

        QVERIFY(login.signOut().result);
        QCOMPARE(login.getCurrentUser().domainMessage, QStringLiteral("No user is registered yet"));
        QCOMPARE(m_signIn->signOuts, 2);
    }

    void shouldRequireBothNamesButStoreThemAsGiven()
    {
        const LoginApplication login = application();
        QCOMPARE(login.saveUser(localUser(QStringLiteral(" \u00A0\t"), QString())).domainMessage,
            QStringLiteral("The first name cannot be empty"));
        QCOMPARE(login.saveUser(localUser(QStringLiteral("Grace"), QStringLiteral("\n"))).domainMessage,
            QStringLiteral("The last name cannot be empty"));
        QVERIFY(!storedUser());

        const UserEntity padded = localUser(QStringLiteral("  Grace "), QStringLiteral("Hopper\n"));
        QVERIFY(login.saveUser(padded).result);
        QCOMPARE(storedUser(), padded);
        // A local account never reaches the backend.
        QVERIFY(m_backend->requests().isEmpty());
    }

    void shouldRegisterASignedInUserAndStoreWhatTheBackendAnswered()
    {
        const LoginResultEntity result = application().signInWithGoogle(nullptr);

        QVERIFY(result.result);
        const UserEntity expected {backendUserId(), QStringLiteral("Ada"), QStringLiteral("Lovelace"),
            QStringLiteral("ada@example.org"), true};
        QCOMPARE(storedUser(), expected);
        const QList<RecordedRequest> requests = m_backend->requests();
        QCOMPARE(requests.size(), 1);
        QCOMPARE(requests.first().path, QStringLiteral("/v0/users"));
        QCOMPARE(QJsonDocument::fromJson(requests.first().body).object(),
            (QJsonObject {{QStringLiteral("usrFirstName"), QStringLiteral("Ada")},
                {QStringLiteral("usrLastName"), QStringLiteral("Lovelace")},
                {QStringLiteral("usrEmail"), QStringLiteral("ada@example.org")}}));
    }

    void shouldStoreNothingWhenSignInOrRegistrationFails()
    {
        m_backend->enqueue(FakeResponse::text(500, "down"), "POST", QStringLiteral("/v0/users"));
        LoginResultEntity result = application().signInWithGoogle(nullptr);
        QCOMPARE(result.infrastructureMessage, QStringLiteral("error del servidor (500)"));
        QVERIFY(!storedUser());

        m_backend->clearRequests();
        auto transport = std::make_shared<const DescribedError>(
            QStringLiteral("Connection refused"), GIDSignInError::transportDomain, 7);
        auto oauth = std::make_shared<const DescribedError>(
            QStringLiteral("HTTP status 502"), GIDSignInError::oauthDomain, 502, transport);
        m_signIn->failure = std::make_exception_ptr(GIDSignInError::make(GIDSignInError::tokenExchangeFailed,
            QStringLiteral("The authorization code could not be exchanged."), oauth));
        result = application().signInWithGoogle(nullptr);
        QCOMPARE(result.infrastructureMessage,
            QStringLiteral("The authorization code could not be exchanged. (domain: com.quorvel.tolvane.GIDSignIn, "
                           "code: -16) | Underlying: HTTP status 502 (domain: com.quorvel.tolvane.OAuth2, code: 502) | "
                           "Underlying: Connection refused (domain: com.quorvel.tolvane.UrlSession, code: 7)"));
        QVERIFY(m_backend->requests().isEmpty());
        QVERIFY(!storedUser());
    }

    void shouldSayWhatIsNotConfiguredBeforeAnySignIn()
    {
        QCOMPARE(application(false, true).signInWithGoogle(nullptr).infrastructureMessage,
            QStringLiteral("Google sign-in is not configured"));
        QCOMPARE(application(true, false).signInWithGoogle(nullptr).infrastructureMessage,
            QStringLiteral("User registration is not configured"));
        QCOMPARE(m_signIn->signIns, 0);
        QVERIFY(!application(false, false).handle(QUrl(QStringLiteral("http://127.0.0.1/"))));
        QVERIFY(application(false, false).signOut().result);
    }

    void shouldUpdateAGoogleUserOnTheBackendBeforeStoringIt()
    {
        const LoginApplication login = application();
        QVERIFY(login.signInWithGoogle(nullptr).result);
        UserEntity renamed = *storedUser();
        renamed.usrFirstName = QStringLiteral("Augusta Ada");
        QVERIFY(login.saveUser(renamed).result);
        QCOMPARE(storedUser(), renamed);
        QCOMPARE(m_accounts->user(FakeBackend::defaultUserId())->value(QStringLiteral("usrFirstName")).toString(),
            QStringLiteral("Augusta Ada"));

        // The backend does not know this id: the stored user stays as it was.
        UserEntity stranger = renamed;
        stranger.usrId = QStringLiteral("abc");
        stranger.usrLastName = QStringLiteral("King");
        const LoginResultEntity result = login.saveUser(stranger);
        QCOMPARE(result.infrastructureMessage, QStringLiteral("usuario no encontrado"));
        QCOMPARE(m_backend->requests().last().path, QStringLiteral("/v0/users/abc"));
        QCOMPARE(storedUser(), renamed);
    }

    void shouldSendSupportMessagesTrimmedAndRefuseBlankOnes()
    {
        const SupportApplication support {std::make_shared<RemoteSupportRepositoryImpl>(client())};

        QCOMPARE(support.sendSupportMessage(QStringLiteral(" \n\t\u2028")).domainMessage,
            QStringLiteral("The message cannot be empty"));
        QVERIFY(m_backend->requests().isEmpty());

        const LoginResultEntity sent = support.sendSupportMessage(QStringLiteral("  The alarm stays silent.\n"));
        QVERIFY(sent.result);
        QVERIFY(!sent.data.has_value());
        QCOMPARE(m_accounts->supportMessages().size(), 1);
        QCOMPARE(m_accounts->supportMessages().first().message, QStringLiteral("The alarm stays silent."));

        m_backend->enqueue(FakeResponse::text(404, "no route"), "POST", QStringLiteral("/v0/support"));
        QCOMPARE(support.sendSupportMessage(QStringLiteral("Hello")).infrastructureMessage,
            QStringLiteral("endpoint de soporte no encontrado"));
        m_backend->enqueue(FakeResponse::json(201, QJsonObject {}), "POST", QStringLiteral("/v0/support"));
        QCOMPARE(support.sendSupportMessage(QStringLiteral("Hello")).infrastructureMessage,
            QStringLiteral("No value associated with key \"supId\"."));
    }
};

TOLVANE_TEST_MAIN(LoginTest)
#include "LoginTest.moc"
