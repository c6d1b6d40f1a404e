#pragma once

#include "login/GoogleSignInRepository.h"
#include "login/LoginResultEntity.h"
#include "login/UserRegistrationRepository.h"
#include "login/UserRepository.h"

#include <exception>
#include <memory>

// The account's use cases for the settings screens. None throws; the blocking ones (saveUser,
// signInWithGoogle) are for a worker thread. googleSignInRepository and userRegistrationRepository
// are null when Google sign-in or the backend are not configured.
struct LoginApplication {
    std::shared_ptr<UserRepository> repository;
    std::shared_ptr<GoogleSignInRepository> googleSignInRepository;
    std::shared_ptr<UserRegistrationRepository> userRegistrationRepository;

    LoginResultEntity getCurrentUser() const;
    // Validates, then stores; a Google account is updated on the backend first and stored as the
    // backend answered it, or not at all.
    LoginResultEntity saveUser(const UserEntity& user) const;
    // Signs in, registers the user on the backend and stores what the backend answered; signs out
    // of Google again when the registration or the storing fails.
    LoginResultEntity signInWithGoogle(QObject* presentingContext) const;
    bool handle(const QUrl& url) const;
    void signOutFromGoogle() const;
    // Signs out of Google, when configured, and forgets the stored user.
    LoginResultEntity signOut() const;

    // "<description> (domain: <domain>, code: <code>)", then one " | Underlying: ..." part per
    // cause, so that the user sees every layer that failed.
    static QString errorChainText(const std::exception& error);
};
