#pragma once

#include "login/UserEntity.h"

#include <QString>

#include <optional>

// What keeps a local account from being saved, in the user's words: the account store's own
// rule for the names, and an e-mail address that is either left out (a local account needs
// none) or looks like one.
namespace LocalAccountCheck {

bool isPlausibleEmail(const QString& email);
std::optional<QString> emailProblem(const QString& email);
std::optional<QString> problem(const UserEntity& user);

} // namespace LocalAccountCheck
