#pragma once

#include "networking/APIError.h"

#include <QString>

// The text a remote repository reports for a failed call.
namespace APIErrorMessageEnum {

// The payload text for forbidden, badRequest, transport and decoding; "error del servidor (<code>)";
// "no autorizado"; and for notFound the caller's own text, since only it knows what was missing.
QString message(const APIError& error, const QString& notFound);

} // namespace APIErrorMessageEnum
