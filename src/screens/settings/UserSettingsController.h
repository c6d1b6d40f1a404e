#pragma once

#include "login/LoginApplication.h"

#include <QObject>

#include <functional>

class ErrorConsoleStore;

// Saves the user from the settings: a new local account or new names for the current one.
class UserSettingsController {
public:
    static inline const QString saveAction = QStringLiteral("UserSettingsController.save");

    UserSettingsController(LoginApplication application, ErrorConsoleStore& console);

    // done runs on receiver's thread; a failure has already gone to the information console.
    void save(QObject* receiver, const UserEntity& user, std::function<void(const LoginResultEntity&)> done) const;

    LoginApplication application;

private:
    ErrorConsoleStore& m_console;
};
