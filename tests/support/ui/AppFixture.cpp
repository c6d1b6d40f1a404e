#include "support/ui/AppFixture.h"

#include "platform/SecretServiceKeychain.h"
#include "platform/SystemClock.h"
#include "platform/SystemSecureRandom.h"
#include "screens/common/Async.h"

#include <QUuid>

#include <stdexcept>

AppFixture::AppFixture(
    GIDSignIn* signIn, QUrl backendBaseURL, std::shared_ptr<UserNotificationCenter> userNotificationCenter)
    : m_path(m_scratch.path())
{
    compose(signIn, std::move(backendBaseURL), std::move(userNotificationCenter));
}

AppFixture::~AppFixture()
{
    if (!screenThreadPool()->waitForDone(60000))
        qWarning("background work of the screens still runs after 60 s");
}

AppFixture::AppFixture(const QString& existingDirectory)
    : m_path(existingDirectory)
{
    m_scratch.remove();
    compose(nullptr, {});
}

void AppFixture::compose(
    GIDSignIn* signIn, QUrl backendBaseURL, std::shared_ptr<UserNotificationCenter> userNotificationCenter)
{
    m_console = std::make_unique<ErrorConsoleStore>(userDefaults(), std::make_shared<SystemClock>());
    RealmConfiguration storeDefaults;
    storeDefaults.fileURL = m_path + QStringLiteral("/default.realm");
    m_services = std::make_unique<AppServices>(AppServices::Parts {
        .notificationCenter = &m_notificationCenter,
        .console = m_console.get(),
        .userDefaults = userDefaults(),
        .keychain = std::make_shared<SecretServiceKeychain>(),
        .random = std::make_shared<SystemSecureRandom>(),
        .storeDefaults = storeDefaults,
        .backendBaseURL = std::move(backendBaseURL),
        .signIn = signIn,
        .userNotificationCenter = std::move(userNotificationCenter),
    });
}

UserDefaults AppFixture::userDefaults() const
{
    return UserDefaults(m_path + QStringLiteral("/Tolvane.conf"));
}

void AppFixture::storeLocalUser(const QString& firstName, const QString& lastName)
{
    UserEntity user;
    user.usrId = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    user.usrFirstName = firstName;
    user.usrLastName = lastName;
    user.usrEmail = QStringLiteral("ada@example.org");
    const LoginResultEntity saved = m_services->loginApplication().saveUser(user);
    if (!saved.result)
        qFatal("could not store the user: %s", qPrintable(saved.firstMessage().value_or(QString())));
}

AppFixture::Tasks AppFixture::signedInTasks() const
{
    const AppServices::TasksSession session = m_services->tasksSession();
    if (!session.user || !session.applications.result)
        throw std::runtime_error("no account is signed in with its tasks");
    return {
        *session.applications.dataAs<TasksApplicationFactory::Applications>(), QUuid::fromString(session.user->usrId)};
}
