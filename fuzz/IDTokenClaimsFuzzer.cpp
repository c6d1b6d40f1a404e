// ID tokens come from the provider's token endpoint; the claims are read before the signature is
// checked, so the reader sees whatever arrives. The saved session read back from the keyring
// goes through the same kind of reading.
#include "FuzzInput.h"
#include "oauth/GIDSession.h"
#include "oauth/IDTokenClaims.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    IDTokenClaims::decode(fuzzText(data, size));
    GIDSession::fromJson(fuzzBytes(data, size));
    return 0;
}
