#include "login/GoogleSignInRepositoryError.h"

GoogleSignInRepositoryError::GoogleSignInRepositoryError(Case kind)
    : DescribedError(
        QStringLiteral("The operation couldn\u2019t be completed. (%1 error %2.)").arg(domain).arg(int(kind)), domain,
        int(kind))
    , m_case(kind)
{
}
