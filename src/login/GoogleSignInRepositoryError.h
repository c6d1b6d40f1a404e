#pragma once

#include "oauth/DescribedError.h"

// Carries no text of its own: like any error without one, it describes itself generically by its
// type and case number.
class GoogleSignInRepositoryError : public DescribedError {
public:
    enum class Case { missingProfile, notSignedIn };

    static inline const QString domain = QStringLiteral("GoogleSignInRepositoryError");

    explicit GoogleSignInRepositoryError(Case kind);

    Case kind() const { return m_case; }

private:
    Case m_case;
};
