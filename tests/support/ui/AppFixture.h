#pragma once

#include "platform/NotificationCenter.h"
#include "screens/common/AppServices.h"
#include "screens/common/ErrorConsoleStore.h"
#include "tasks/TasksApplicationFactory.h"

#include <QTemporaryDir>
#include <QUrl>

#include <memory>

// The application's services over a scratch folder: preferences, encrypted stores (keys in the
// session's keyring), its own notification centre and console. Local accounts only unless a
// sign-in client and a backend are given.
class AppFixture {
public:
    // userNotificationCenter: where alarms and reminders go; null for the program's shared one.
    explicit AppFixture(GIDSignIn* signIn = nullptr, QUrl backendBaseURL = {},
        std::shared_ptr<UserNotificationCenter> userNotificationCenter = nullptr);
    // Over a folder that another fixture filled (a child process of a benchmark); it is kept.
    explicit AppFixture(const QString& existingDirectory);
    // Waits for the screens' work still running in the background: it reads these services,
    // which the program keeps for its whole life but a test drops at its end.
    ~AppFixture();

    AppServices& services() { return *m_services; }
    NotificationCenter& notificationCenter() { return m_notificationCenter; }
    ErrorConsoleStore& console() { return *m_console; }
    UserDefaults userDefaults() const;
    QString directory() const { return m_path; }

    // Stores a local account, as the chip's set-up does.
    void storeLocalUser(
        const QString& firstName = QStringLiteral("Ada"), const QString& lastName = QStringLiteral("Lovelace"));

    // The task use cases of the account signed in and its id there, for setting up what a test
    // shows; throws without one.
    struct Tasks {
        TasksApplicationFactory::Applications applications;
        QUuid userId;
    };
    Tasks signedInTasks() const;

private:
    void compose(GIDSignIn* signIn, QUrl backendBaseURL,
        std::shared_ptr<UserNotificationCenter> userNotificationCenter = nullptr);

    QTemporaryDir m_scratch;
    QString m_path;
    NotificationCenter m_notificationCenter;
    std::unique_ptr<ErrorConsoleStore> m_console;
    std::unique_ptr<AppServices> m_services;
};
