#include "oauth/GIDSignInError.h"

namespace GIDSignInError {

DescribedError make(Code code, const QString& description, std::shared_ptr<const DescribedError> underlying)
{
    return DescribedError(description, domain, code, std::move(underlying));
}

} // namespace GIDSignInError
