#include "support/ui/GoogleAccountFixture.h"

#include "oauth/GIDSessionStore.h"
#include "oauth/GIDSignIn.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"

#include <stdexcept>

namespace {

const QString clientID = QStringLiteral("tolvane-desktop-ui-test");

} // namespace

GoogleAccountFixture::GoogleAccountFixture(std::shared_ptr<UserNotificationCenter> userNotificationCenter)
    : m_clock(std::make_shared<SettableClock>(QDateTime::currentDateTimeUtc()))
    , m_keychain(std::make_shared<SecretServiceKeychain>())
{
    m_keychain->remove(GIDSessionStore::service, clientID);
    m_server = std::make_unique<ServerBackend>(clientID, m_clock);
    if (!m_server->isRunning())
        throw std::runtime_error("the backend did not start: " + m_server->error().toStdString());
    provider().onIdTokenIssued([this](const QString&, const QString& subject) {
        const QMutexLocker locker(&m_mutex);
        m_subject = subject;
    });
    m_browser = std::make_shared<ScriptedBrowser>();
    m_client = std::make_unique<GIDSignIn>(GIDSignInServices {m_keychain, std::make_shared<SystemSecureRandom>(),
        m_clock, m_browser, UrlSession::shared(), provider().endpoints()});
    m_client->setConfiguration(GIDConfiguration(clientID));
    m_app = std::make_unique<AppFixture>(m_client.get(), m_server->baseURL(), std::move(userNotificationCenter));
}

GoogleAccountFixture::~GoogleAccountFixture()
{
    m_browser->waitUntilDone();
}

QString GoogleAccountFixture::backendSubject() const
{
    const QMutexLocker locker(&m_mutex);
    return m_subject;
}

QUuid GoogleAccountFixture::backendUser()
{
    // Registration answers the same id every time.
    return m_server->registerUser(backendSubject());
}

LoginResultEntity GoogleAccountFixture::signIn()
{
    return m_app->services().loginApplication().signInWithGoogle(nullptr);
}
