#include "screens/common/AppServices.h"

#include "backup/StoreBackups.h"
#include "login/GoogleAuthTokenProvider.h"
#include "login/GoogleSignInRepositoryImpl.h"
#include "login/LocalUserRepositoryImpl.h"
#include "login/RemoteSupportRepositoryImpl.h"
#include "login/RemoteUserRegistrationRepositoryImpl.h"
#include "oauth/GIDSignIn.h"
#include "platform/BuildSettings.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemClock.h"
#include "platform/SystemSecureRandom.h"
#include "tasks/reminders/RemindingTaskRepository.h"
#include "undo/UndoHistory.h"

AppServices::AppServices(Parts parts)
    : m_parts(std::move(parts))
    , m_undoHistory(std::make_shared<UndoHistory>(m_parts.notificationCenter))
{
    // Here, on the thread that composes the program, rather than at the first task saved: the
    // shared centre's timer, bus connection and sound player belong to the GUI thread.
    if (!m_parts.userNotificationCenter)
        m_parts.userNotificationCenter = LiveUserNotificationCenter::shared();
}

AppServices AppServices::live()
{
    Parts parts {.notificationCenter = &NotificationCenter::defaultCenter(),
        .console = &ErrorConsoleStore::shared(),
        .userDefaults = UserDefaults::standard(),
        .keychain = std::make_shared<SecretServiceKeychain>(),
        .random = std::make_shared<SystemSecureRandom>(),
        .storeDefaults = RealmConfiguration::defaultConfiguration(),
        .backendBaseURL = QUrl(BuildSettings::backendBaseURL())};
    const std::optional<GIDConfiguration> google = GIDConfiguration::fromBuildSettings();
    if (google) {
        GIDSignIn& client = GIDSignIn::sharedInstance();
        client.setConfiguration(google);
        parts.signIn = &client;
    }
    return AppServices(std::move(parts));
}

LoginApplication AppServices::loginApplication() const
{
    LoginApplication application;
    application.repository = std::make_shared<LocalUserRepositoryImpl>(UserDatabase {m_parts.userDefaults});
    if (m_parts.signIn) {
        application.googleSignInRepository = std::make_shared<GoogleSignInRepositoryImpl>(
            *m_parts.signIn, std::make_shared<LiveGoogleSignInPerforming>(*m_parts.signIn));
    }
    if (const std::optional<APIClient> client = apiClient())
        application.userRegistrationRepository = std::make_shared<RemoteUserRegistrationRepositoryImpl>(*client);
    return application;
}

SupportApplication AppServices::supportApplication() const
{
    const std::optional<APIClient> client = apiClient();
    return SupportApplication {client ? std::make_shared<RemoteSupportRepositoryImpl>(*client) : nullptr};
}

std::optional<APIClient> AppServices::apiClient() const
{
    if (!m_parts.signIn || !m_parts.backendBaseURL.isValid() || m_parts.backendBaseURL.isEmpty())
        return std::nullopt;
    return APIClient(
        m_parts.backendBaseURL, std::make_shared<GoogleAuthTokenProvider>(*m_parts.signIn), UrlSession::shared(), true);
}

RealmEncryptedConfigurationFactory AppServices::storeConfigurations() const
{
    RealmEncryptedConfigurationFactory factory(m_parts.keychain, m_parts.random, m_parts.storeDefaults);
    factory.setBeforeMigration(StoreBackups::backUpBeforeMigration(std::make_shared<SystemClock>()));
    // Posted from the migrating thread; the window shows a notice when one takes long.
    if (NotificationCenter* center = m_parts.notificationCenter) {
        factory.setMigrationWatch(
            [center](bool running) { center->post(NotificationName::storeMigrationRunning, running); });
    }
    return factory;
}

TaskResultEntity AppServices::tasksApplications(bool isGoogleAccount) const
{
    const TasksApplicationFactory factory(storeConfigurations());
    TaskResultEntity made = factory.make(isGoogleAccount, apiClient());
    if (const auto* made_ = made.dataAs<TasksApplicationFactory::Applications>()) {
        TasksApplicationFactory::Applications applications = *made_;
        // Before the history sees them: undo and redo must move reminders too.
        const auto reminding
            = std::make_shared<RemindingTaskRepository>(applications.tasks.taskRepository, taskReminderScheduler());
        applications.tasks.taskRepository = reminding;
        applications.taskLists.taskRepository = reminding;
        m_undoHistory->attach(applications);
        made.data = applications;
    }
    return made;
}

AppServices::TasksSession AppServices::tasksSession() const
{
    const LoginResultEntity current = loginApplication().getCurrentUser();
    const UserEntity* user = current.dataAs<UserEntity>();
    if (!user)
        return {std::nullopt, current};
    return {*user, tasksApplications(user->usrIsGoogleAccount)};
}
