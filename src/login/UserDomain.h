#pragma once

#include "login/LoginResultEntity.h"
#include "login/UserEntity.h"

namespace UserDomain {

// Both names must hold more than white space; the e-mail is the provider's business. Only the
// check trims: the user is stored as given.
LoginResultEntity validate(const UserEntity& user);

} // namespace UserDomain
