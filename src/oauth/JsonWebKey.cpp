#include "oauth/JsonWebKey.h"

#include <memory>
#include <openssl/bn.h>
#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/param_build.h>

namespace {

template <auto Free> struct Deleter {
    template <typename T> void operator()(T* pointer) const { Free(pointer); }
};
using BigNumber = std::unique_ptr<BIGNUM, Deleter<BN_free>>;
using ParamBuilder = std::unique_ptr<OSSL_PARAM_BLD, Deleter<OSSL_PARAM_BLD_free>>;
using Params = std::unique_ptr<OSSL_PARAM, Deleter<OSSL_PARAM_free>>;
using KeyContext = std::unique_ptr<EVP_PKEY_CTX, Deleter<EVP_PKEY_CTX_free>>;
using Key = std::unique_ptr<EVP_PKEY, Deleter<EVP_PKEY_free>>;
using DigestContext = std::unique_ptr<EVP_MD_CTX, Deleter<EVP_MD_CTX_free>>;

const unsigned char* bytes(const QByteArray& data)
{
    return reinterpret_cast<const unsigned char*>(data.constData());
}

BigNumber bigNumber(const QByteArray& bigEndian)
{
    return BigNumber(BN_bin2bn(bytes(bigEndian), static_cast<int>(bigEndian.size()), nullptr));
}

Key publicKey(const QByteArray& modulus, const QByteArray& exponent)
{
    const BigNumber n = bigNumber(modulus);
    const BigNumber e = bigNumber(exponent);
    const ParamBuilder builder(OSSL_PARAM_BLD_new());
    if (!n || !e || !builder || !OSSL_PARAM_BLD_push_BN(builder.get(), OSSL_PKEY_PARAM_RSA_N, n.get())
        || !OSSL_PARAM_BLD_push_BN(builder.get(), OSSL_PKEY_PARAM_RSA_E, e.get()))
        return nullptr;
    const Params params(OSSL_PARAM_BLD_to_param(builder.get()));
    const KeyContext context(EVP_PKEY_CTX_new_from_name(nullptr, "RSA", nullptr));
    EVP_PKEY* key = nullptr;
    if (!params || !context || EVP_PKEY_fromdata_init(context.get()) != 1
        || EVP_PKEY_fromdata(context.get(), &key, EVP_PKEY_PUBLIC_KEY, params.get()) != 1)
        return nullptr;
    return Key(key);
}

} // namespace

bool JsonWebKey::verifiesRS256(const QByteArray& signingInput, const QByteArray& signature) const
{
    const Key key = publicKey(modulus, exponent);
    if (!key || EVP_PKEY_get_bits(key.get()) < 2048)
        return false;
    const DigestContext context(EVP_MD_CTX_new());
    return context && EVP_DigestVerifyInit(context.get(), nullptr, EVP_sha256(), nullptr, key.get()) == 1
        && EVP_DigestVerify(context.get(), bytes(signature), static_cast<size_t>(signature.size()), bytes(signingInput),
               static_cast<size_t>(signingInput.size()))
        == 1;
}
