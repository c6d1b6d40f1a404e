#include "login/LoginApplication.h"

#include "login/UserDomain.h"
#include "oauth/DescribedError.h"

#include <QStringList>

namespace {

QString describe(const DescribedError& error)
{
    return error.localizedDescription() + QStringLiteral(" (domain: ") + error.domain() + QStringLiteral(", code: ")
        + QString::number(error.code()) + QLatin1Char(')');
}

} // namespace

QString LoginApplication::errorChainText(const std::exception& error)
{
    const auto* described = dynamic_cast<const DescribedError*>(&error);
    if (!described)
        return QString::fromUtf8(error.what()) + QStringLiteral(" (domain: std::exception, code: 0)");
    QStringList parts {describe(*described)};
    for (const DescribedError* cause = described->underlying(); cause; cause = cause->underlying())
        parts.append(QStringLiteral("Underlying: ") + describe(*cause));
    return parts.join(QStringLiteral(" | "));
}

LoginResultEntity LoginApplication::getCurrentUser() const
{
    return repository->getCurrentUser();
}

LoginResultEntity LoginApplication::saveUser(const UserEntity& user) const
{
    LoginResultEntity validation = UserDomain::validate(user);
    if (!validation.result)
        return validation;
    if (user.usrIsGoogleAccount && userRegistrationRepository) {
        LoginResultEntity remote = userRegistrationRepository->updateUser(user);
        if (const UserEntity* updated = remote.result ? remote.dataAs<UserEntity>() : nullptr)
            return repository->saveUser(*updated);
        return remote;
    }
    return repository->saveUser(user);
}

LoginResultEntity LoginApplication::signInWithGoogle(QObject* presentingContext) const
{
    if (!googleSignInRepository)
        return LoginResultEntity::infrastructureFailure(QStringLiteral("Google sign-in is not configured"));
    if (!userRegistrationRepository)
        return LoginResultEntity::infrastructureFailure(QStringLiteral("User registration is not configured"));
    UserEntity signedIn;
    try {
        signedIn = googleSignInRepository->signIn(presentingContext);
    } catch (const std::exception& error) {
        return LoginResultEntity::infrastructureFailure(errorChainText(error));
    }
    // Signed in with Google but not known to the backend (or not stored here) is no state to start
    // from: the next start would restore the Google session with no user. Both or neither.
    LoginResultEntity registration = userRegistrationRepository->createUser(signedIn);
    const UserEntity* registered = registration.result ? registration.dataAs<UserEntity>() : nullptr;
    LoginResultEntity outcome = registered ? repository->saveUser(*registered) : registration;
    if (!outcome.result)
        signOutFromGoogle();
    return outcome;
}

bool LoginApplication::handle(const QUrl& url) const
{
    return googleSignInRepository && googleSignInRepository->handle(url);
}

void LoginApplication::signOutFromGoogle() const
{
    if (googleSignInRepository)
        googleSignInRepository->signOut();
}

LoginResultEntity LoginApplication::signOut() const
{
    signOutFromGoogle();
    return repository->deleteUser();
}
