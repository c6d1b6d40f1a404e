#include "screens/settings/UserSettingsController.h"

#include "screens/common/ActionRunner.h"

UserSettingsController::UserSettingsController(LoginApplication application, ErrorConsoleStore& console)
    : application(std::move(application))
    , m_console(console)
{
}

void UserSettingsController::save(
    QObject* receiver, const UserEntity& user, std::function<void(const LoginResultEntity&)> done) const
{
    runAction(
        receiver, m_console, saveAction, [login = application, user] { return login.saveUser(user); }, std::move(done));
}
