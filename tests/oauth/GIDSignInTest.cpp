#include "oauth/GIDSignIn.h"

#include "oauth/GIDSessionStore.h"
#include "oauth/GIDSignInError.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/identity/ScriptedBrowser.h"

#include <QFile>
#include <QJsonObject>
#include <QTest>
#include <QUrlQuery>

namespace {

const QString clientID = QStringLiteral("tolvane-desktop-test-client");
const QString clientSecret = QStringLiteral("installed-app-secret");

// Runs call and returns the sign-in error it throws.
template <typename Call> std::optional<DescribedError> errorOf(Call call)
{
    try {
        call();
    } catch (const DescribedError& error) {
        return error;
    }
    return std::nullopt;
}

// The local addresses of every TCP socket listening on port, as the kernel lists them
// ("0100007F" is 127.0.0.1). Read from /proc so no other interface has to be contacted.
QStringList listeningAddresses(quint16 port)
{
    QStringList addresses;
    for (const char* table : {"/proc/net/tcp", "/proc/net/tcp6"}) {
        QFile file(QString::fromLatin1(table));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        file.readLine();
        while (!file.atEnd()) {
            const QList<QByteArray> fields = file.readLine().simplified().split(' ');
            const QList<QByteArray> local = fields.value(1).split(':');
            if (fields.value(3) == "0A" && local.value(1).toUInt(nullptr, 16) == port)
                addresses.append(QString::fromLatin1(local.value(0)));
        }
    }
    return addresses;
}

QString query(const QUrl& url, const char* name)
{
    return QUrlQuery(url).queryItemValue(QLatin1String(name), QUrl::FullyDecoded);
}

} // namespace

Q_DECLARE_METATYPE(LocalIdentityProvider::Signing)

class GIDSignInTest : public QObject {
    Q_OBJECT

private:
    std::shared_ptr<SettableClock> m_clock;
    std::shared_ptr<SecretServiceKeychain> m_keychain;
    std::unique_ptr<LocalIdentityProvider> m_provider;

    std::unique_ptr<GIDSignIn> client(
        std::shared_ptr<BrowserOpener> browser, std::optional<GIDEndpoints> endpoints = std::nullopt) const
    {
        auto signIn = std::make_unique<GIDSignIn>(GIDSignInServices {m_keychain, std::make_shared<SystemSecureRandom>(),
            m_clock, std::move(browser), UrlSession::shared(), endpoints.value_or(m_provider->endpoints())});
        signIn->setConfiguration(GIDConfiguration(clientID, clientSecret));
        return signIn;
    }

    std::optional<QByteArray> storedSession() const
    {
        return m_keychain->copyMatching(GIDSessionStore::service, clientID).data;
    }

    std::shared_ptr<GIDGoogleUser> signedInUser(GIDSignIn& signIn, ScriptedBrowser& browser) const
    {
        const auto user = signIn.signIn();
        browser.waitUntilDone();
        return user;
    }

    qint64 now() const { return m_clock->now().toSecsSinceEpoch(); }

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
        m_provider = std::make_unique<LocalIdentityProvider>(clientID, clientSecret, m_clock);
    }

    void shouldSignInThroughTheBrowserAndKeepTheSessionInTheKeyring()
    {
        auto browser = std::make_shared<ScriptedBrowser>();
        auto signIn = client(browser);

        const auto user = signIn->signIn();
        browser->waitUntilDone();

        QCOMPARE(user->userID(), QStringLiteral("108234567890123456789"));
        QCOMPARE(user->profile(),
            (GIDProfileData {QStringLiteral("ada@example.org"), QStringLiteral("Ada Lovelace"), QStringLiteral("Ada"),
                QStringLiteral("Lovelace")}));
        QCOMPARE(user->idToken()->tokenString, m_provider->lastIdToken());
        QCOMPARE(user->idToken()->expirationDate.toSecsSinceEpoch(), m_clock->now().toSecsSinceEpoch() + 3600);
        QCOMPARE(signIn->currentUser(), user);

        const QUrl asked = browser->authorizationURL();
        const QUrl redirectURI(query(asked, "redirect_uri"));
        QCOMPARE(redirectURI.toString(), QStringLiteral("http://127.0.0.1:%1/").arg(redirectURI.port()));
        QCOMPARE(query(asked, "scope"), QStringLiteral("openid email profile"));
        QCOMPARE(query(asked, "code_challenge_method"), QStringLiteral("S256"));
        QCOMPARE(query(asked, "code_challenge").size(), 43);
        QVERIFY(query(asked, "state").size() >= 32);

        const auto landing = browser->landing();
        QVERIFY(landing);
        QCOMPARE(landing->status, 200);
        QVERIFY(landing->body.contains("Signed in"));

        const auto stored = storedSession();
        QVERIFY(stored);
        QVERIFY(stored->contains(user->idToken()->tokenString.toLatin1()));
    }

    void shouldListenOnLoopbackOnlyAndForOneRedirect()
    {
        auto browser = std::make_shared<ScriptedBrowser>();
        browser->asksForFavicon = true;
        browser->repeatsRedirect = true;
        QStringList addressesWhileWaiting;
        browser->beforeVisiting = [&](const QUrl& url) {
            addressesWhileWaiting = listeningAddresses(QUrl(query(url, "redirect_uri")).port());
            return url;
        };
        auto signIn = client(browser);

        signIn->signIn();
        browser->waitUntilDone();

        QCOMPARE(addressesWhileWaiting, QStringList {QStringLiteral("0100007F")});
        QCOMPARE(browser->favicon()->status, 404);
        QCOMPARE(browser->landing()->status, 200);
        QVERIFY(!browser->repeatedLanding()->connected);
        QCOMPARE(m_provider->codeExchanges(), 1);
    }

    void shouldRefuseAForgedStateOrAWrongVerifier()
    {
        m_provider->forgeNextState();
        auto forged = std::make_shared<ScriptedBrowser>();
        auto signIn = client(forged);

        auto error = errorOf([&] { signIn->signIn(); });
        forged->waitUntilDone();

        QVERIFY(error);
        QCOMPARE(error->domain(), GIDSignInError::domain);
        QCOMPARE(error->code(), int(GIDSignInError::stateMismatch));
        QVERIFY(forged->landing()->body.contains("Sign-in failed"));
        // A forged answer's code is never spent.
        QCOMPARE(m_provider->codeExchanges(), 0);

        // Someone in the middle swaps the challenge for their own: our verifier no longer fits.
        auto tampered = std::make_shared<ScriptedBrowser>();
        tampered->beforeVisiting = [](const QUrl& url) {
            QUrlQuery items(url);
            items.removeQueryItem(QStringLiteral("code_challenge"));
            items.addQueryItem(
                QStringLiteral("code_challenge"), QStringLiteral("E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"));
            QUrl changed = url;
            changed.setQuery(items);
            return changed;
        };
        auto second = client(tampered);
        error = errorOf([&] { second->signIn(); });
        tampered->waitUntilDone();

        QVERIFY(error);
        QCOMPARE(error->code(), int(GIDSignInError::tokenExchangeFailed));
        QVERIFY(error->underlying());
        QCOMPARE(error->underlying()->domain(), GIDSignInError::oauthDomain);
        QCOMPARE(error->underlying()->code(), 400);
        QCOMPARE(error->underlying()->localizedDescription(),
            QStringLiteral("invalid_grant: Code verifier does not match."));
        QCOMPARE(m_provider->codeExchanges(), 1);
        QVERIFY(!signIn->currentUser());
        QVERIFY(!second->currentUser());
        QVERIFY(!storedSession());
    }

    void shouldTreatCancelDenialAndTheTimeLimitAsErrors()
    {
        // The user gives up in the application while the page stays open.
        auto idle = std::make_shared<ScriptedBrowser>(ScriptedBrowser::Behaviour::stayOnPage);
        auto signIn = client(idle);
        std::unique_ptr<QThread> canceller(QThread::create([&] {
            while (idle->authorizationURL().isEmpty())
                QThread::msleep(5);
            signIn->cancelSignIn();
        }));
        canceller->start();
        auto error = errorOf([&] { signIn->signIn(); });
        canceller->wait();
        QVERIFY(error);
        QCOMPARE(error->code(), int(GIDSignInError::canceled));
        const QUrl redirectURI(query(idle->authorizationURL(), "redirect_uri"));
        QVERIFY(!ScriptedBrowser::get(redirectURI).connected);

        // The user declines on the provider's page.
        m_provider->denyNextAuthorization(QStringLiteral("access_denied"));
        auto declining = std::make_shared<ScriptedBrowser>();
        auto second = client(declining);
        error = errorOf([&] { second->signIn(); });
        declining->waitUntilDone();
        QVERIFY(error);
        QCOMPARE(error->code(), int(GIDSignInError::canceled));
        QCOMPARE(error->underlying()->localizedDescription(), QStringLiteral("access_denied"));
        QVERIFY(declining->landing()->body.contains("Sign-in failed"));

        // Nobody comes back at all.
        auto absent = std::make_shared<ScriptedBrowser>(ScriptedBrowser::Behaviour::stayOnPage);
        auto third = client(absent);
        third->setRedirectTimeLimit(std::chrono::milliseconds(300));
        error = errorOf([&] { third->signIn(); });
        QVERIFY(error);
        QCOMPARE(error->code(), int(GIDSignInError::timedOut));
        QVERIFY(!ScriptedBrowser::get(QUrl(query(absent->authorizationURL(), "redirect_uri"))).connected);

        // Nothing to open the page with; and nothing configured, in which case no page is asked for.
        auto none = std::make_shared<ScriptedBrowser>(ScriptedBrowser::Behaviour::refuseToOpen);
        error = errorOf([&] { client(none)->signIn(); });
        QCOMPARE(error->code(), int(GIDSignInError::browserUnavailable));
        auto unconfigured = std::make_shared<ScriptedBrowser>();
        auto fourth = client(unconfigured);
        fourth->setConfiguration(std::nullopt);
        error = errorOf([&] { fourth->signIn(); });
        QCOMPARE(error->code(), int(GIDSignInError::notConfigured));
        QVERIFY(unconfigured->authorizationURL().isEmpty());
        QVERIFY(!storedSession());
    }

    void shouldRestoreTheSessionInANewClient()
    {
        auto fresh = client(std::make_shared<ScriptedBrowser>());
        const auto nothing = errorOf([&] { fresh->restorePreviousSignIn(); });
        QVERIFY(nothing);
        QCOMPARE(nothing->code(), int(GIDSignInError::hasNoAuthInKeychain));
        QVERIFY(!fresh->currentUser());

        auto browser = std::make_shared<ScriptedBrowser>();
        const auto original = client(browser)->signIn();
        browser->waitUntilDone();

        auto restarted = client(std::make_shared<ScriptedBrowser>(ScriptedBrowser::Behaviour::refuseToOpen));
        const auto restored = restarted->restorePreviousSignIn();
        QCOMPARE(restored->session(), original->session());
        QCOMPARE(restarted->currentUser(), restored);
    }

    void shouldRefreshWithinFiveMinutesOfExpiry()
    {
        auto browser = std::make_shared<ScriptedBrowser>();
        auto signIn = client(browser);
        const auto user = signIn->signIn();
        browser->waitUntilDone();
        const QString first = user->idToken()->tokenString;

        m_clock->advance(3600 - 301);
        user->refreshTokensIfNeeded();
        QCOMPARE(m_provider->refreshes(), 0);
        QCOMPARE(user->idToken()->tokenString, first);

        m_clock->advance(2);
        user->refreshTokensIfNeeded();
        QCOMPARE(m_provider->refreshes(), 1);
        const QString renewed = user->idToken()->tokenString;
        QVERIFY(renewed != first);
        QCOMPARE(renewed, m_provider->lastIdToken());
        QCOMPARE(user->idToken()->expirationDate.toSecsSinceEpoch(), m_clock->now().toSecsSinceEpoch() + 3600);
        // The renewed session is what the next start finds, refresh token and profile included.
        const auto restored = client(browser)->restorePreviousSignIn();
        QCOMPARE(restored->session(), user->session());
        QVERIFY(!restored->session().refreshToken.isEmpty());
        QCOMPARE(restored->profile()->givenName, QStringLiteral("Ada"));
    }

    void shouldReportARefusedRefreshAndKeepTheOldTokens()
    {
        auto browser = std::make_shared<ScriptedBrowser>();
        const auto user = client(browser)->signIn();
        browser->waitUntilDone();
        const GIDSession before = user->session();

        m_provider->revokeRefreshTokens();
        m_clock->advance(3600);
        const auto error = errorOf([&] { user->refreshTokensIfNeeded(); });

        QVERIFY(error);
        QCOMPARE(error->code(), int(GIDSignInError::refreshFailed));
        QCOMPARE(error->underlying()->localizedDescription(),
            QStringLiteral("invalid_grant: Token has been expired or revoked."));
        QCOMPARE(user->session(), before);
    }

    void shouldForgetTheUserAndTheKeyringItemOnSignOut()
    {
        auto browser = std::make_shared<ScriptedBrowser>();
        auto signIn = client(browser);
        signIn->signIn();
        browser->waitUntilDone();
        QVERIFY(storedSession());

        signIn->signOut();

        QVERIFY(!signIn->currentUser());
        QCOMPARE(m_keychain->copyMatching(GIDSessionStore::service, clientID).status, KeychainStatus::itemNotFound);
        QVERIFY(!signIn->handle(QUrl(QStringLiteral("com.quorvel.tolvane:/oauth2redirect?code=x"))));
        QCOMPARE(errorOf([&] { client(browser)->restorePreviousSignIn(); })->code(),
            int(GIDSignInError::hasNoAuthInKeychain));
    }

    void shouldLetASignOutWinOverARefreshOrSignInUnderWay()
    {
        auto browser = std::make_shared<ScriptedBrowser>();
        auto signIn = client(browser);
        const auto user = signedInUser(*signIn, *browser);

        // A request needs a token an hour later; the provider is slow to renew it.
        m_clock->advance(3600);
        m_provider->holdTokenAnswers();
        std::optional<DescribedError> refreshError;
        std::unique_ptr<QThread> request(
            QThread::create([&] { refreshError = errorOf([&] { user->refreshTokensIfNeeded(); }); }));
        request->start();
        QVERIFY(m_provider->waitForHeldTokenRequest());
        signIn->signOut();
        m_provider->releaseTokenAnswers();
        QVERIFY(request->wait(60000));

        QVERIFY(refreshError);
        QCOMPARE(refreshError->code(), int(GIDSignInError::signedOut));
        QCOMPARE(m_provider->refreshes(), 1);
        QVERIFY(!signIn->currentUser());
        QCOMPARE(m_keychain->copyMatching(GIDSessionStore::service, clientID).status, KeychainStatus::itemNotFound);
        QCOMPARE(errorOf([&] { client(browser)->restorePreviousSignIn(); })->code(),
            int(GIDSignInError::hasNoAuthInKeychain));
        // The signed-out user's refresh token is not spent again either.
        QCOMPARE(errorOf([&] { user->refreshTokensIfNeeded(); })->code(), int(GIDSignInError::signedOut));
        QCOMPARE(m_provider->refreshes(), 1);

        // A sign-in whose code exchange is still under way when the user signs out.
        auto second = std::make_shared<ScriptedBrowser>();
        auto again = client(second);
        m_provider->holdTokenAnswers();
        std::optional<DescribedError> signInError;
        std::unique_ptr<QThread> attempt(QThread::create([&] { signInError = errorOf([&] { again->signIn(); }); }));
        attempt->start();
        QVERIFY(m_provider->waitForHeldTokenRequest());
        again->signOut();
        m_provider->releaseTokenAnswers();
        QVERIFY(attempt->wait(60000));
        second->waitUntilDone();

        QVERIFY(signInError);
        QCOMPARE(signInError->code(), int(GIDSignInError::signedOut));
        QCOMPARE(m_provider->codeExchanges(), 2);
        QVERIFY(!again->currentUser());
        QVERIFY(!storedSession());
    }

    void shouldRefuseAnIdTokenThatDoesNotCheckOut_data()
    {
        QTest::addColumn<QJsonObject>("claims");
        QTest::addColumn<LocalIdentityProvider::Signing>("signing");
        QTest::addColumn<QString>("reason");
        const qint64 at = QDateTime::currentSecsSinceEpoch();
        const auto published = LocalIdentityProvider::Signing::publishedKey;
        QTest::newRow("another issuer") << QJsonObject {{"iss", "https://accounts.example.com"}} << published
                                        << "The ID token comes from another issuer.";
        QTest::newRow("no issuer") << QJsonObject {{"iss", QJsonValue()}} << published
                                   << "The ID token comes from another issuer.";
        QTest::newRow("expired an hour ago")
            << QJsonObject {{"exp", at - 3600}, {"iat", at - 7200}} << published << "The ID token has expired.";
        QTest::newRow("issued in the future")
            << QJsonObject {{"iat", at + 600}} << published << "The ID token is not valid yet.";
        QTest::newRow("not valid before later")
            << QJsonObject {{"nbf", at + 600}} << published << "The ID token is not valid yet.";
        QTest::newRow("authorized party is another client")
            << QJsonObject {{"azp", "another-client"}} << published << "The ID token was issued to another client.";
        QTest::newRow("audience is another client")
            << QJsonObject {{"aud", "another-client"}} << published << "The ID token was issued to another client.";
        QTest::newRow("signed with a key the provider does not publish")
            << QJsonObject {} << LocalIdentityProvider::Signing::unpublishedKey
            << "The ID token is signed with a key the provider does not publish.";
        QTest::newRow("unsigned") << QJsonObject {} << LocalIdentityProvider::Signing::none
                                  << "The ID token is not signed with RS256.";
        QTest::newRow("HMAC keyed with the public key")
            << QJsonObject {} << LocalIdentityProvider::Signing::hmacWithPublicKey
            << "The ID token is not signed with RS256.";
    }

    void shouldRefuseAnIdTokenThatDoesNotCheckOut()
    {
        QFETCH(QJsonObject, claims);
        QFETCH(LocalIdentityProvider::Signing, signing);
        QFETCH(QString, reason);
        m_provider->overrideClaims(claims);
        m_provider->setSigning(signing);
        auto browser = std::make_shared<ScriptedBrowser>();
        auto signIn = client(browser);

        const auto error = errorOf([&] { signIn->signIn(); });
        browser->waitUntilDone();

        QVERIFY(error);
        QCOMPARE(error->code(), int(GIDSignInError::invalidIdToken));
        QCOMPARE(error->localizedDescription(), reason);
        QCOMPARE(m_provider->codeExchanges(), 1);
        QVERIFY(browser->landing()->body.contains("Sign-in failed"));
        QVERIFY(!signIn->currentUser());
        QVERIFY(!storedSession());
    }

    void shouldTolerateClockSkewAndItsOwnClientAsAuthorizedParty()
    {
        // This machine's clock runs four minutes behind the provider's.
        m_provider->overrideClaims({{"iat", now() + 240}, {"nbf", now() + 240}, {"azp", clientID}});
        auto browser = std::make_shared<ScriptedBrowser>();
        QCOMPARE(signedInUser(*client(browser), *browser)->userID(), QStringLiteral("108234567890123456789"));
        QVERIFY(storedSession());
    }

    void shouldKeepTheOldSessionWhenARenewalDoesNotCheckOut()
    {
        auto browser = std::make_shared<ScriptedBrowser>();
        const auto user = signedInUser(*client(browser), *browser);
        const GIDSession before = user->session();
        m_clock->advance(3600);

        for (const QJsonObject& claims : {QJsonObject {{"exp", now() - 60}}, QJsonObject {{"iss", "https://evil"}}}) {
            m_provider->overrideClaims(claims);
            const auto error = errorOf([&] { user->refreshTokensIfNeeded(); });
            QVERIFY(error);
            QCOMPARE(error->code(), int(GIDSignInError::invalidIdToken));
            QCOMPARE(user->session(), before);
            QCOMPARE(GIDSession::fromJson(*storedSession()), std::optional<GIDSession>(before));
        }
        QCOMPARE(m_provider->refreshes(), 2);

        // Once the provider answers properly again, the renewal goes through.
        m_provider->overrideClaims({});
        user->refreshTokensIfNeeded();
        QCOMPARE(user->idToken()->tokenString, m_provider->lastIdToken());
    }

    void shouldFetchTheProvidersKeysOnceAndAgainForANewKey()
    {
        auto browser = std::make_shared<ScriptedBrowser>();
        const auto user = signedInUser(*client(browser), *browser);
        QCOMPARE(m_provider->jwksFetches(), 1);

        m_clock->advance(3600);
        user->refreshTokensIfNeeded();
        QCOMPARE(m_provider->jwksFetches(), 1);

        // The provider rotates its key: the unknown key id sends the client back for the new set.
        m_provider->rotateSigningKey();
        m_clock->advance(3600);
        user->refreshTokensIfNeeded();
        QCOMPARE(m_provider->jwksFetches(), 2);
        QCOMPARE(user->idToken()->tokenString, m_provider->lastIdToken());

        // A key id the fresh set does not list either is refused after one more look.
        m_provider->setSigning(LocalIdentityProvider::Signing::unpublishedKey);
        m_clock->advance(3600);
        QCOMPARE(errorOf([&] { user->refreshTokensIfNeeded(); })->code(), int(GIDSignInError::invalidIdToken));
        QCOMPARE(m_provider->jwksFetches(), 3);
    }

    void shouldFetchTokensAndKeysInTheClearFromLoopbackAddressesOnly()
    {
        QVERIFY(GIDEndpoints::isTrustworthy(QUrl(QStringLiteral("https://oauth2.googleapis.com/token"))));
        QVERIFY(GIDEndpoints::isTrustworthy(QUrl(QStringLiteral("http://127.0.0.1:8080/token"))));
        QVERIFY(GIDEndpoints::isTrustworthy(QUrl(QStringLiteral("http://[::1]:8080/token"))));
        QVERIFY(!GIDEndpoints::isTrustworthy(QUrl(QStringLiteral("http://oauth2.example.com/token"))));
        QVERIFY(!GIDEndpoints::isTrustworthy(QUrl(QStringLiteral("http://192.168.1.20/token"))));
        QVERIFY(!GIDEndpoints::isTrustworthy(QUrl(QStringLiteral("ftp://127.0.0.1/token"))));

        // "localhost" reaches the provider here, but a name can be made to resolve anywhere.
        const auto byName = [](QUrl url) {
            url.setHost(QStringLiteral("localhost"));
            return url;
        };
        GIDEndpoints insecureToken = m_provider->endpoints();
        insecureToken.token = byName(insecureToken.token);
        auto browser = std::make_shared<ScriptedBrowser>();
        auto error = errorOf([&] { client(browser, insecureToken)->signIn(); });
        browser->waitUntilDone();
        QCOMPARE(error->code(), int(GIDSignInError::tokenExchangeFailed));
        QCOMPARE(m_provider->codeExchanges(), 0);

        GIDEndpoints insecureKeys = m_provider->endpoints();
        insecureKeys.jwks = byName(insecureKeys.jwks);
        auto second = std::make_shared<ScriptedBrowser>();
        error = errorOf([&] { client(second, insecureKeys)->signIn(); });
        second->waitUntilDone();
        QCOMPARE(error->code(), int(GIDSignInError::invalidIdToken));
        QCOMPARE(m_provider->jwksFetches(), 0);
        QVERIFY(!storedSession());
    }

    void shouldExpectGooglesIssuerInEitherForm()
    {
        qunsetenv("TOLVANE_GOOGLE_ISSUER");
        QCOMPARE(GIDEndpoints::fromEnvironment().issuers,
            (QStringList {QStringLiteral("https://accounts.google.com"), QStringLiteral("accounts.google.com")}));
        qputenv("TOLVANE_GOOGLE_ISSUER", "https://id.example.org");
        QCOMPARE(GIDEndpoints::fromEnvironment().issuers, QStringList {QStringLiteral("https://id.example.org")});
        qunsetenv("TOLVANE_GOOGLE_ISSUER");
    }
};

TOLVANE_TEST_MAIN(GIDSignInTest)
#include "GIDSignInTest.moc"
