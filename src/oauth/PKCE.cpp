#include "oauth/PKCE.h"

#include "platform/SecureRandom.h"

#include <QCryptographicHash>

namespace PKCE {

namespace {

QByteArray randomText(SecureRandom& random, int byteCount)
{
    QByteArray bytes(byteCount, '\0');
    if (random.copyBytes(bytes) != 0)
        return {};
    return base64Url(bytes);
}

} // namespace

QByteArray base64Url(const QByteArray& bytes)
{
    return bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

QByteArray makeVerifier(SecureRandom& random)
{
    return randomText(random, 32);
}

QByteArray challenge(const QByteArray& verifier)
{
    return base64Url(QCryptographicHash::hash(verifier, QCryptographicHash::Sha256));
}

QByteArray makeState(SecureRandom& random)
{
    return randomText(random, 24);
}

} // namespace PKCE
