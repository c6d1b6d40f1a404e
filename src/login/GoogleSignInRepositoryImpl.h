#pragma once

#include "login/GoogleSignInPerforming.h"
#include "login/GoogleSignInRepository.h"

#include <memory>

class GIDSignIn;

// Sign-in through the live client, whose user is shown through GoogleUserRepresentable.
class LiveGoogleSignInPerforming final : public GoogleSignInPerforming {
public:
    explicit LiveGoogleSignInPerforming(GIDSignIn& client);
    std::shared_ptr<const GoogleUserRepresentable> signIn(QObject* presentingContext) override;

private:
    GIDSignIn& m_client;
};

class GoogleSignInRepositoryImpl final : public GoogleSignInRepository {
public:
    // Configures the shared sign-in client for this OAuth client and signs in through it.
    explicit GoogleSignInRepositoryImpl(const QString& clientID, const QString& clientSecret = {});
    // handle, signOut and restorePreviousSignIn go to client; signIn to performer.
    GoogleSignInRepositoryImpl(GIDSignIn& client, std::shared_ptr<GoogleSignInPerforming> performer);

    UserEntity signIn(QObject* presentingContext) override;
    bool handle(const QUrl& url) override;
    void signOut() override;
    void restorePreviousSignIn() override;

    // Throws GoogleSignInRepositoryError missingProfile when the user has no profile.
    static UserEntity userEntity(const GoogleUserRepresentable& user);

    const std::shared_ptr<GoogleSignInPerforming> performer;

private:
    GIDSignIn& m_client;
};
