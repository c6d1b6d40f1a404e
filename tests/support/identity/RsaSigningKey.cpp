#include "support/identity/RsaSigningKey.h"

#include <openssl/bn.h>
#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/rsa.h>
#include <stdexcept>

namespace {

QByteArray base64Url(const QByteArray& bytes)
{
    return bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

} // namespace

struct RsaSigningKey::Pair {
    EVP_PKEY* key = nullptr;
    ~Pair() { EVP_PKEY_free(key); }
};

RsaSigningKey::RsaSigningKey(QString keyID)
    : m_keyID(std::move(keyID))
    , m_pair(std::make_unique<Pair>())
{
    m_pair->key = EVP_RSA_gen(2048);
    if (!m_pair->key)
        throw std::runtime_error("OpenSSL made no RSA key");
}

RsaSigningKey::~RsaSigningKey() = default;

QByteArray RsaSigningKey::signRS256(const QByteArray& signingInput) const
{
    EVP_MD_CTX* context = EVP_MD_CTX_new();
    size_t length = 0;
    QByteArray signature;
    if (EVP_DigestSignInit(context, nullptr, EVP_sha256(), nullptr, m_pair->key) == 1
        && EVP_DigestSign(context, nullptr, &length, reinterpret_cast<const unsigned char*>(signingInput.constData()),
               signingInput.size())
            == 1) {
        signature.resize(static_cast<qsizetype>(length));
        if (EVP_DigestSign(context, reinterpret_cast<unsigned char*>(signature.data()), &length,
                reinterpret_cast<const unsigned char*>(signingInput.constData()), signingInput.size())
            != 1)
            signature.clear();
        signature.resize(static_cast<qsizetype>(length));
    }
    EVP_MD_CTX_free(context);
    if (signature.isEmpty())
        throw std::runtime_error("OpenSSL could not sign");
    return signature;
}

QJsonObject RsaSigningKey::publicJwk() const
{
    const auto component = [this](const char* name) {
        BIGNUM* number = nullptr;
        EVP_PKEY_get_bn_param(m_pair->key, name, &number);
        QByteArray bytes(BN_num_bytes(number), Qt::Uninitialized);
        BN_bn2bin(number, reinterpret_cast<unsigned char*>(bytes.data()));
        BN_free(number);
        return QString::fromLatin1(base64Url(bytes));
    };
    return QJsonObject {{QStringLiteral("kty"), QStringLiteral("RSA")}, {QStringLiteral("use"), QStringLiteral("sig")},
        {QStringLiteral("alg"), QStringLiteral("RS256")}, {QStringLiteral("kid"), m_keyID},
        {QStringLiteral("n"), component(OSSL_PKEY_PARAM_RSA_N)},
        {QStringLiteral("e"), component(OSSL_PKEY_PARAM_RSA_E)}};
}
