#pragma once

#include "login/LoginApplication.h"
#include "login/SupportApplication.h"
#include "meetings/alarms/MeetAlarmScheduler.h"
#include "meetings/templates/LocalAlarmMessageTemplateRepositoryImpl.h"
#include "networking/APIClient.h"
#include "platform/Keychain.h"
#include "platform/NotificationCenter.h"
#include "platform/SecureRandom.h"
#include "platform/UserDefaults.h"
#include "platform/notifications/LiveUserNotificationCenter.h"
#include "screens/common/ErrorConsoleStore.h"
#include "storage/RealmConfiguration.h"
#include "tasks/TasksApplicationFactory.h"
#include "tasks/reminders/TaskReminderScheduler.h"

#include <QUrl>

#include <memory>
#include <optional>

class GIDSignIn;
class UndoHistory;

// What the screens build their applications from. The program composes one over the shared
// instances (live()); tests compose one over temporary folders, the fake backend and a local
// identity provider.
class AppServices {
public:
    struct Parts {
        NotificationCenter* notificationCenter = nullptr;
        ErrorConsoleStore* console = nullptr;
        UserDefaults userDefaults;
        std::shared_ptr<Keychain> keychain;
        std::shared_ptr<SecureRandom> random;
        // Where the encrypted stores go: beside this file.
        RealmConfiguration storeDefaults;
        // Empty: no backend configured.
        QUrl backendBaseURL;
        // Null: Google sign-in not configured.
        GIDSignIn* signIn = nullptr;
        // Null: the shared desktop notification centre and espeak-ng.
        std::shared_ptr<UserNotificationCenter> userNotificationCenter;
        std::shared_ptr<SpeechSynthesizer> speechSynthesizer;
    };

    explicit AppServices(Parts parts);
    // The shared instances and the build's configuration.
    static AppServices live();

    NotificationCenter& notificationCenter() const { return *m_parts.notificationCenter; }
    ErrorConsoleStore& console() const { return *m_parts.console; }
    const UserDefaults& userDefaults() const { return m_parts.userDefaults; }
    bool isGoogleSignInAvailable() const { return m_parts.signIn != nullptr; }
    GIDSignIn* signIn() const { return m_parts.signIn; }

    LoginApplication loginApplication() const;
    SupportApplication supportApplication() const;
    // The backend client of the signed-in Google user; none without a backend or sign-in.
    std::optional<APIClient> apiClient() const;
    // The history every change made through the applications below is recorded in (one for all
    // workspaces and copies of these services).
    UndoHistory& undoHistory() const { return *m_undoHistory; }
    // The Tasks module for that user's kind of account, recording into undoHistory(); its tasks'
    // reminders follow every change made through it.
    TaskResultEntity tasksApplications(bool isGoogleAccount) const;

    // The location and keys of the encrypted local stores: what backups copy.
    const RealmConfiguration& storeDefaults() const { return m_parts.storeDefaults; }
    // Every store made from here is backed up before its schema is migrated, and tells
    // (storeMigrationRunning) while it is.
    RealmEncryptedConfigurationFactory storeConfigurations() const;

    // What a workspace starts from: the current user, if any, and the Tasks module built for
    // that user's kind of account. Blocking: run it off the GUI thread.
    struct TasksSession {
        std::optional<UserEntity> user;
        // data: TasksApplicationFactory::Applications; without a user, why there is none.
        ResultEntity applications;
    };
    TasksSession tasksSession() const;

    // Alarms: arming meets, the day switch, the settings' preview and delete-all.
    std::shared_ptr<UserNotificationCenter> userNotificationCenter() const
    {
        return m_parts.userNotificationCenter ? m_parts.userNotificationCenter : LiveUserNotificationCenter::shared();
    }
    MeetAlarmScheduler meetAlarmScheduler() const
    {
        return MeetAlarmScheduler::live(m_parts.userDefaults, userNotificationCenter(), m_parts.speechSynthesizer);
    }
    TaskReminderScheduler taskReminderScheduler() const { return TaskReminderScheduler(meetAlarmScheduler()); }
    AlarmMessageApplication alarmMessageApplication() const
    {
        return AlarmMessageApplication(std::make_shared<LocalAlarmMessageTemplateRepositoryImpl>(
            AlarmMessageTemplateDatabase(m_parts.userDefaults)));
    }

private:
    Parts m_parts;
    std::shared_ptr<UndoHistory> m_undoHistory;
};
