#include "screens/settings/LocalAccountCheck.h"

#include "login/UserDomain.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace LocalAccountCheck {

bool isPlausibleEmail(const QString& email)
{
    // One "@", something before it, a dotted domain after it, no spaces: enough to catch a typo
    // without refusing real addresses.
    static const QRegularExpression shape(QStringLiteral("^[^@\\s]+@[^@\\s.]+(\\.[^@\\s.]+)+$"));
    return shape.match(email.trimmed()).hasMatch();
}

std::optional<QString> emailProblem(const QString& email)
{
    if (!email.trimmed().isEmpty() && !isPlausibleEmail(email))
        //% "Enter an e-mail address like name@example.com, or leave it empty."
        return qtTrId("user-settings-email-invalid-text");
    return std::nullopt;
}

std::optional<QString> problem(const UserEntity& user)
{
    const LoginResultEntity valid = UserDomain::validate(user);
    if (!valid.result)
        return valid.firstMessage().value_or(QString());
    return emailProblem(user.usrEmail);
}

} // namespace LocalAccountCheck
