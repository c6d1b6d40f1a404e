#pragma once

#include "login/UserEntity.h"

#include <QObject>
#include <QUrl>

// Google sign-in as the account code uses it. signIn and restorePreviousSignIn block (run them off
// the GUI thread) and throw the sign-in client's errors unchanged.
class GoogleSignInRepository {
public:
    virtual ~GoogleSignInRepository() = default;
    // The signed-in user, usrIsGoogleAccount true.
    virtual UserEntity signIn(QObject* presentingContext) = 0;
    virtual bool handle(const QUrl& url) = 0;
    virtual void signOut() = 0;
    virtual void restorePreviousSignIn() = 0;
};
