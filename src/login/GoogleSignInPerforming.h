#pragma once

#include "login/GoogleUserRepresentable.h"

#include <QObject>

#include <memory>

// Runs the interactive sign-in. Blocks until the user is signed in, and throws whatever stopped
// it (a DescribedError from the sign-in client).
class GoogleSignInPerforming {
public:
    virtual ~GoogleSignInPerforming() = default;
    virtual std::shared_ptr<const GoogleUserRepresentable> signIn(QObject* presentingContext) = 0;
};
