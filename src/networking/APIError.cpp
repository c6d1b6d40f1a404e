#include "networking/APIError.h"

namespace {

QString caseName(APIError::Case kind)
{
    switch (kind) {
    case APIError::Case::forbidden:
        return QStringLiteral("forbidden");
    case APIError::Case::badRequest:
        return QStringLiteral("badRequest");
    case APIError::Case::server:
        return QStringLiteral("server");
    case APIError::Case::transport:
        return QStringLiteral("transport");
    case APIError::Case::decoding:
        return QStringLiteral("decoding");
    case APIError::Case::unauthorized:
        return QStringLiteral("unauthorized");
    case APIError::Case::notFound:
        return QStringLiteral("notFound");
    }
    return QStringLiteral("unknown");
}

} // namespace

APIError::APIError(Case kind, QString text, int statusCode)
    : m_case(kind)
    , m_text(std::move(text))
    , m_statusCode(statusCode)
{
    m_what = debugDescription().toStdString();
}

APIError APIError::forbidden(QString body)
{
    return APIError(Case::forbidden, std::move(body), 0);
}

APIError APIError::badRequest(QString text)
{
    return APIError(Case::badRequest, std::move(text), 0);
}

APIError APIError::server(int statusCode)
{
    return APIError(Case::server, QString(), statusCode);
}

APIError APIError::transport(QString description)
{
    return APIError(Case::transport, std::move(description), 0);
}

APIError APIError::decoding(QString description)
{
    return APIError(Case::decoding, std::move(description), 0);
}

APIError APIError::unauthorized()
{
    return APIError(Case::unauthorized, QString(), 0);
}

APIError APIError::notFound()
{
    return APIError(Case::notFound, QString(), 0);
}

QString APIError::debugDescription() const
{
    switch (m_case) {
    case Case::forbidden:
    case Case::badRequest:
    case Case::transport:
    case Case::decoding: {
        QString quoted = m_text;
        quoted.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
        return caseName(m_case) + QLatin1String("(\"") + quoted + QLatin1String("\")");
    }
    case Case::server:
        return caseName(m_case) + QLatin1Char('(') + QString::number(m_statusCode) + QLatin1Char(')');
    case Case::unauthorized:
    case Case::notFound:
        break;
    }
    return caseName(m_case);
}
