#include "networking/APIClient.h"

#include "networking/WithTimeout.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringDecoder>

#include <cmath>

namespace {

constexpr double tokenTimeLimitSeconds = 15;
constexpr std::chrono::seconds requestTimeout {60};

std::optional<QString> utf8Text(const QByteArray& data)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder.decode(data);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

// The backend cannot read NaN or infinity, and QJsonDocument would quietly write them as null.
bool isEncodable(const QJsonValue& value)
{
    if (value.isDouble())
        return std::isfinite(value.toDouble());
    if (value.isArray()) {
        for (const QJsonValue& element : value.toArray()) {
            if (!isEncodable(element))
                return false;
        }
    }
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
            if (!isEncodable(it.value()))
                return false;
        }
    }
    return !value.isUndefined();
}

// Query items with '&', '=', '+' and '#' escaped inside names and values: a value must not be
// able to start another item.
QByteArray percentEncodedQuery(const QList<APIClient::QueryItem>& items)
{
    static const QByteArray keep = "!$'()*,;:@/?";
    QByteArray query;
    for (const auto& [name, value] : items) {
        if (!query.isEmpty())
            query.append('&');
        query.append(QUrl::toPercentEncoding(name, keep)).append('=').append(QUrl::toPercentEncoding(value, keep));
    }
    return query;
}

} // namespace

APIClient::APIClient(
    QUrl baseURL, std::shared_ptr<AuthTokenProvider> tokenProvider, UrlSession session, bool loggingEnabled)
    : APIClient(std::move(baseURL), std::move(tokenProvider), session, NetworkLogger(loggingEnabled))
{
}

APIClient::APIClient(
    QUrl baseURL, std::shared_ptr<AuthTokenProvider> tokenProvider, UrlSession session, NetworkLogger logger)
    : m_baseURL(std::move(baseURL))
    , m_tokenProvider(std::move(tokenProvider))
    , m_session(session)
    , m_logger(std::move(logger))
    , m_baseIsUsable(m_baseURL.isValid() && !m_baseURL.isRelative() && !m_baseURL.host().isEmpty())
    , m_basePath(m_baseURL.path(QUrl::FullyDecoded))
{
    while (m_basePath.endsWith(QLatin1Char('/')))
        m_basePath.chop(1);
}

QUrl APIClient::requestURL(const QString& path, const QList<QueryItem>& queryItems) const
{
    if (!m_baseIsUsable)
        return QUrl();
    QString joined = m_basePath;
    QStringView tail(path);
    while (tail.startsWith(QLatin1Char('/')))
        tail = tail.mid(1);
    joined += QLatin1Char('/');
    joined += tail;

    QUrl url = m_baseURL;
    // The path is taken literally: a '?' or '%' in it is part of the path, not a query or an escape.
    url.setPath(joined, QUrl::DecodedMode);
    if (!queryItems.isEmpty())
        url.setQuery(QString::fromLatin1(percentEncodedQuery(queryItems)), QUrl::StrictMode);
    return url.isValid() ? url : QUrl();
}

QByteArray APIClient::send(
    const char* method, const QString& path, const QList<QueryItem>& queryItems, const BodyEncoder& encodeBody) const
{
    const QUrl url = requestURL(path, queryItems);
    if (url.isEmpty())
        throw APIError::badRequest(QStringLiteral("URL inválida"));

    UrlRequest request;
    request.url = url;
    request.httpMethod = method;
    request.timeoutInterval = requestTimeout;
    request.setValue("Content-Type", "application/json");

    // Only built when there is a log to write.
    const auto logExchange = [&](const QString& responseText) {
        if (m_logger.isEnabled())
            m_logger.log(
                QLatin1String(method) + QLatin1Char(' ') + url.toString(QUrl::FullyEncoded), request, responseText);
    };

    QString token;
    try {
        // The provider is shared with the worker, which may outlive this call.
        token = withTimeout(tokenTimeLimitSeconds, [provider = m_tokenProvider] { return provider->token(); });
    } catch (const TimeoutError&) {
        logExchange(QStringLiteral("auth timeout"));
        throw APIError::transport(QStringLiteral("tiempo de espera agotado al autenticar"));
    } catch (...) {
        throw APIError::unauthorized();
    }
    request.setValue("Authorization", "Bearer " + token.toUtf8());

    if (encodeBody) {
        QJsonValue json;
        try {
            json = encodeBody();
        } catch (...) {
            throw APIError::badRequest(QStringLiteral("no se pudo codificar la solicitud"));
        }
        if (!isEncodable(json))
            throw APIError::badRequest(QStringLiteral("no se pudo codificar la solicitud"));
        request.httpBody = JSONCoding::serialize(json);
    }

    UrlResponse response;
    try {
        response = m_session.send(request);
    } catch (const UrlSessionError& error) {
        logExchange(QStringLiteral("transport error: ") + error.localizedDescription());
        throw APIError::transport(error.localizedDescription());
    }
    if (!response.isHTTP) {
        logExchange(QStringLiteral("invalid response"));
        throw APIError::transport(QStringLiteral("respuesta inválida"));
    }

    const int status = response.statusCode;
    if (m_logger.isEnabled())
        logExchange(QString::number(status) + QLatin1Char(' ') + utf8Text(response.body).value_or(QStringLiteral("-")));

    if (status >= 200 && status <= 299)
        return response.body;
    switch (status) {
    case 400:
        throw APIError::badRequest(utf8Text(response.body).value_or(QString()));
    case 401:
        throw APIError::unauthorized();
    case 403:
        throw APIError::forbidden(utf8Text(response.body).value_or(QString()));
    case 404:
        throw APIError::notFound();
    default:
        throw APIError::server(status);
    }
}
