#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <memory>

// A fresh 2048-bit RSA key pair made with OpenSSL for one test run, so that no private key ever
// needs to be committed: signs RS256 and publishes its public half as a JSON Web Key.
class RsaSigningKey {
public:
    explicit RsaSigningKey(QString keyID);
    ~RsaSigningKey();
    RsaSigningKey(const RsaSigningKey&) = delete;
    RsaSigningKey& operator=(const RsaSigningKey&) = delete;

    const QString& keyID() const { return m_keyID; }
    QByteArray signRS256(const QByteArray& signingInput) const;
    // {"kty":"RSA","use":"sig","alg":"RS256","kid":...,"n":...,"e":...}
    QJsonObject publicJwk() const;

private:
    struct Pair;
    QString m_keyID;
    std::unique_ptr<Pair> m_pair;
};
