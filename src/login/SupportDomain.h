#pragma once

#include "login/LoginResultEntity.h"

namespace SupportDomain {

// A message must hold more than white space and line ends.
LoginResultEntity validate(const QString& message);

} // namespace SupportDomain
