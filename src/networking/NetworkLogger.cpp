#include "networking/NetworkLogger.h"

#include "platform/AppPaths.h"
#include "platform/SystemClock.h"
#include "wire/JSONCoding.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QStringDecoder>

#include <cstdio>

namespace {

std::optional<QString> defaultLogFile()
{
    const QString support = AppPaths::applicationSupportDirectory();
    if (support.isEmpty())
        return std::nullopt;
    const QString directory = support + QLatin1String("/Tolvane/Logs");
    if (!QDir().mkpath(directory))
        return std::nullopt;
    return directory + QLatin1String("/network.log");
}

bool isPrivateKey(const QString& key)
{
    const QString lowered = key.toLower();
    return lowered.contains(QLatin1String("done")) || lowered.contains(QLatin1String("title"))
        || lowered.contains(QLatin1String("date"));
}

QJsonValue withoutPrivateMembers(const QJsonValue& value)
{
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        QJsonObject kept;
        for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
            if (!isPrivateKey(it.key()))
                kept.insert(it.key(), withoutPrivateMembers(it.value()));
        }
        return kept;
    }
    if (value.isArray()) {
        QJsonArray kept;
        for (const QJsonValue& element : value.toArray())
            kept.append(withoutPrivateMembers(element));
        return kept;
    }
    return value;
}

QString requestText(const UrlRequest& request)
{
    if (!request.httpBody)
        return QStringLiteral("-");
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder.decode(*request.httpBody);
    if (decoder.hasError())
        return QStringLiteral("-");
    return text;
}

} // namespace

NetworkLogger::NetworkLogger(bool isEnabled)
    : NetworkLogger(isEnabled, defaultLogFile(), std::make_shared<SystemClock>())
{
}

NetworkLogger::NetworkLogger(bool isEnabled, std::optional<QString> filePath, std::shared_ptr<const Clock> clock)
    : m_isEnabled(isEnabled)
    , m_fileURL(std::move(filePath))
    , m_clock(std::move(clock))
{
}

QString NetworkLogger::filteredResponse(const QString& response)
{
    const qsizetype blank = response.indexOf(QLatin1Char(' '));
    if (blank <= 0 || response.at(0) != QLatin1Char('2'))
        return response;
    try {
        const QJsonValue json = JSONCoding::parse(response.mid(blank + 1).toUtf8());
        const QByteArray filtered = JSONCoding::serialize(withoutPrivateMembers(json));
        return response.left(blank) + QLatin1Char(' ') + QString::fromUtf8(filtered);
    } catch (const DecodingError&) {
        return response;
    }
}

QString NetworkLogger::record(const QString& endpoint, const UrlRequest& request, const QString& response) const
{
    // Local time, as the user reads their clock.
    const QString stamp = m_clock->now().toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    return QLatin1Char('[') + stamp + QLatin1String("]\nendpoint: ") + endpoint + QLatin1String("\nrequest: ")
        + requestText(request) + QLatin1String("\nresponse: ") + filteredResponse(response) + QLatin1Char('\n');
}

void NetworkLogger::log(const QString& endpoint, const UrlRequest& request, const QString& response) const
{
    if (!m_isEnabled)
        return;
    const QByteArray data = record(endpoint, request, response).toUtf8();

    // One write for the record and the blank line after it, so records from several threads do
    // not cut into each other on the terminal.
    const QByteArray printed = data + '\n';
    std::fwrite(printed.constData(), 1, static_cast<size_t>(printed.size()), stdout);
    std::fflush(stdout);

    if (!m_fileURL)
        return;
    // Appending creates the file when it is missing; a log that cannot be written is not worth
    // failing a request for.
    QFile file(*m_fileURL);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        file.write(data);
}
