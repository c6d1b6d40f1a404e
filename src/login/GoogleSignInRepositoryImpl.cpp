#include "login/GoogleSignInRepositoryImpl.h"

#include "login/GoogleSignInRepositoryError.h"
#include "oauth/GIDSignIn.h"

#include <QUuid>

namespace {

class GIDProfile final : public GoogleProfileRepresentable {
public:
    explicit GIDProfile(GIDProfileData data)
        : m_data(std::move(data))
    {
    }
    std::optional<QString> givenName() const override { return m_data.givenName; }
    std::optional<QString> familyName() const override { return m_data.familyName; }
    QString name() const override { return m_data.name; }
    QString email() const override { return m_data.email; }

private:
    GIDProfileData m_data;
};

class GIDUser final : public GoogleUserRepresentable {
public:
    explicit GIDUser(const GIDGoogleUser& user)
        : m_userID(user.userID())
    {
        if (const auto profile = user.profile())
            m_profile = std::make_shared<GIDProfile>(*profile);
    }
    std::optional<QString> userID() const override
    {
        return m_userID.isEmpty() ? std::nullopt : std::optional<QString>(m_userID);
    }
    std::shared_ptr<const GoogleProfileRepresentable> profile() const override { return m_profile; }

private:
    QString m_userID;
    std::shared_ptr<const GoogleProfileRepresentable> m_profile;
};

GIDSignIn& configuredSharedClient(const QString& clientID, const QString& clientSecret)
{
    GIDSignIn& client = GIDSignIn::sharedInstance();
    client.setConfiguration(GIDConfiguration(clientID, clientSecret));
    return client;
}

} // namespace

LiveGoogleSignInPerforming::LiveGoogleSignInPerforming(GIDSignIn& client)
    : m_client(client)
{
}

std::shared_ptr<const GoogleUserRepresentable> LiveGoogleSignInPerforming::signIn(QObject* presentingContext)
{
    return std::make_shared<GIDUser>(*m_client.signIn(presentingContext));
}

GoogleSignInRepositoryImpl::GoogleSignInRepositoryImpl(const QString& clientID, const QString& clientSecret)
    : GoogleSignInRepositoryImpl(configuredSharedClient(clientID, clientSecret),
        std::make_shared<LiveGoogleSignInPerforming>(GIDSignIn::sharedInstance()))
{
}

GoogleSignInRepositoryImpl::GoogleSignInRepositoryImpl(
    GIDSignIn& client, std::shared_ptr<GoogleSignInPerforming> performer)
    : performer(std::move(performer))
    , m_client(client)
{
}

UserEntity GoogleSignInRepositoryImpl::signIn(QObject* presentingContext)
{
    return userEntity(*performer->signIn(presentingContext));
}

UserEntity GoogleSignInRepositoryImpl::userEntity(const GoogleUserRepresentable& user)
{
    const auto profile = user.profile();
    if (!profile)
        throw GoogleSignInRepositoryError(GoogleSignInRepositoryError::Case::missingProfile);
    return {user.userID().value_or(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()),
        profile->givenName().value_or(profile->name()), profile->familyName().value_or(QString()), profile->email(),
        true};
}

bool GoogleSignInRepositoryImpl::handle(const QUrl& url)
{
    return m_client.handle(url);
}

void GoogleSignInRepositoryImpl::signOut()
{
    m_client.signOut();
}

void GoogleSignInRepositoryImpl::restorePreviousSignIn()
{
    m_client.restorePreviousSignIn();
}
