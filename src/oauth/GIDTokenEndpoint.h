#pragma once

#include "networking/UrlSession.h"
#include "oauth/GIDConfiguration.h"
#include "oauth/GIDSession.h"

#include <QList>
#include <QUrl>

#include <utility>

// The provider's token endpoint: the code exchange and the refresh grant, both form-encoded POSTs
// that carry the client's credentials.
class GIDTokenEndpoint {
public:
    GIDTokenEndpoint(UrlSession session, QUrl url, GIDConfiguration configuration);

    // Throws a GIDSignInError with failureCode whose cause is the provider's OAuth error or the
    // transport failure.
    GIDTokenResponse exchangeCode(const QString& code, const QByteArray& verifier, const QUrl& redirectURI) const;
    GIDTokenResponse refresh(const QString& refreshToken) const;

    const GIDConfiguration& configuration() const { return m_configuration; }

private:
    GIDTokenResponse post(QList<std::pair<QString, QString>> form, int failureCode, const QString& failure) const;

    UrlSession m_session;
    QUrl m_url;
    GIDConfiguration m_configuration;
};
