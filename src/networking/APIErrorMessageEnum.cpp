#include "networking/APIErrorMessageEnum.h"

namespace APIErrorMessageEnum {

QString message(const APIError& error, const QString& notFound)
{
    switch (error.kind()) {
    case APIError::Case::forbidden:
    case APIError::Case::badRequest:
    case APIError::Case::transport:
    case APIError::Case::decoding:
        return error.text();
    case APIError::Case::server:
        return QStringLiteral("error del servidor (") + QString::number(error.statusCode()) + QLatin1Char(')');
    case APIError::Case::unauthorized:
        return QStringLiteral("no autorizado");
    case APIError::Case::notFound:
        return notFound;
    }
    return error.text();
}

} // namespace APIErrorMessageEnum
