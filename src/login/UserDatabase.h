#pragma once

#include "login/LoginResultEntity.h"
#include "login/UserEntity.h"
#include "platform/UserDefaults.h"

// The current user, kept as JSON in the user defaults. There is one stored user or none.
struct UserDatabase {
    static inline const QString currentUserKey = QStringLiteral("Login.UserDatabase.currentUser");

    UserDefaults userDefaults;

    // Success with data = a UserDatabase over the standard user defaults; cannot fail.
    static LoginResultEntity open();

    // data = the stored UserEntity. Nothing stored: domainMessage "No user is registered yet";
    // undecodable: databaseMessage = why. A broken value is reported, never repaired.
    LoginResultEntity load() const;
    LoginResultEntity save(const UserEntity& user) const;
    // Always succeeds, whether or not a user was stored.
    LoginResultEntity delete_() const;
};
