#include "support/ui/GoogleAccountFixture.h"

#include "oauth/GIDSessionStore.h"
#include "oauth/GIDSignIn.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"

namespace {

const QString clientID = QStringLiteral("tolvane-desktop-ui-test");

} // namespace

GoogleAccountFixture::GoogleAccountFixture()
    : m_clock(std::make_shared<SettableClock>(QDateTime::currentDateTimeUtc()))
    , m_keychain(std::make_shared<SecretServiceKeychain>())
{
    m_keychain->remove(GIDSessionStore::service, clientID);
    m_provider = std::make_unique<LocalIdentityProvider>(clientID, QString(), m_clock);
    m_backend = std::make_unique<FakeBackend>();
    m_accounts = std::make_unique<AccountsBackend>(*m_backend);
    m_tasks = std::make_unique<TasksBackend>(*m_backend);
    // Whatever token the provider issues, the backend takes as its subject's bearer.
    m_provider->onIdTokenIssued([this](const QString& token, const QString& subject) {
        const QUuid user = QUuid::createUuidV5(QUuid(), subject);
        m_backend->acceptToken(token, user);
        const QMutexLocker locker(&m_mutex);
        m_backendUser = user;
    });
    m_browser = std::make_shared<ScriptedBrowser>();
    m_client = std::make_unique<GIDSignIn>(GIDSignInServices {m_keychain, std::make_shared<SystemSecureRandom>(),
        m_clock, m_browser, UrlSession::shared(), m_provider->endpoints()});
    m_client->setConfiguration(GIDConfiguration(clientID));
    m_app = std::make_unique<AppFixture>(m_client.get(), m_backend->baseURL());
}

GoogleAccountFixture::~GoogleAccountFixture()
{
    m_browser->waitUntilDone();
}

QUuid GoogleAccountFixture::backendUser() const
{
    const QMutexLocker locker(&m_mutex);
    return m_backendUser;
}

LoginResultEntity GoogleAccountFixture::signIn()
{
    return m_app->services().loginApplication().signInWithGoogle(nullptr);
}
