#include "Wire.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QUuid>

#include <cstdio>
#include <ctime>

namespace wire {

namespace {

Refusal wrong(const char* key)
{
    return Refusal {400, std::string("wrong or missing \"") + key + '"'};
}

} // namespace

std::optional<std::string> uuid(const QString& text)
{
    if (text.size() != 36)
        return std::nullopt;
    const QUuid parsed = QUuid::fromString(text);
    if (parsed.isNull() && text != QLatin1String("00000000-0000-0000-0000-000000000000"))
        return std::nullopt;
    return parsed.toString(QUuid::WithoutBraces).toStdString();
}

QString uuidOut(const std::string& stored)
{
    return QString::fromStdString(stored).toUpper();
}

std::optional<qint64> dateIn(const QString& text)
{
    static const QRegularExpression iso(
        QStringLiteral("^\\d{4}-\\d{2}-\\d{2}T\\d{2}:\\d{2}:\\d{2}(\\.\\d+)?(Z|[+-]\\d{2}:?\\d{2})$"));
    if (!iso.match(text).hasMatch())
        return std::nullopt;
    const QDateTime date = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!date.isValid())
        return std::nullopt;
    return date.toSecsSinceEpoch();
}

std::string dateText(qint64 secondsSinceEpoch)
{
    // gmtime_r rather than QDateTime: lists format a date per row, and this is many times cheaper.
    const std::time_t time = static_cast<std::time_t>(secondsSinceEpoch);
    std::tm utc {};
    gmtime_r(&time, &utc);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ", utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday,
        utc.tm_hour, utc.tm_min, utc.tm_sec);
    return text;
}

QString dateOut(qint64 secondsSinceEpoch)
{
    return QString::fromStdString(dateText(secondsSinceEpoch));
}

QJsonObject object(const std::string& body, std::initializer_list<const char*> allowed)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(body), &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        throw Refusal {400, "the body is not a JSON object"};
    const QJsonObject result = document.object();
    for (auto it = result.begin(); it != result.end(); ++it) {
        if (std::none_of(
                allowed.begin(), allowed.end(), [&](const char* key) { return it.key() == QLatin1String(key); }))
            throw Refusal {400, "unknown key in the body"};
    }
    return result;
}

QString text(const QJsonObject& body, const char* key)
{
    const QJsonValue value = body.value(QLatin1String(key));
    if (!value.isString())
        throw wrong(key);
    return value.toString();
}

QString name(const QJsonObject& body, const char* key)
{
    QString value = text(body, key);
    if (value.trimmed().isEmpty())
        throw Refusal {400, std::string("\"") + key + "\" is blank"};
    return value;
}

bool flag(const QJsonObject& body, const char* key)
{
    const QJsonValue value = body.value(QLatin1String(key));
    if (!value.isBool())
        throw wrong(key);
    return value.toBool();
}

std::string uuidField(const QJsonObject& body, const char* key)
{
    const auto value = uuid(body.value(QLatin1String(key)).toString());
    if (!value || !body.value(QLatin1String(key)).isString())
        throw wrong(key);
    return *value;
}

qint64 date(const QJsonObject& body, const char* key)
{
    const QJsonValue value = body.value(QLatin1String(key));
    const auto seconds = value.isString() ? dateIn(value.toString()) : std::nullopt;
    if (!seconds)
        throw wrong(key);
    return *seconds;
}

std::optional<qint64> optionalDate(const QJsonObject& body, const char* key)
{
    const QJsonValue value = body.value(QLatin1String(key));
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    return date(body, key);
}

qint64 integer(const QJsonObject& body, const char* key)
{
    const QJsonValue value = body.value(QLatin1String(key));
    if (!value.isDouble() || value.toDouble() != double(value.toInteger()) || value.toInteger() < 0
        || value.toInteger() > 1000000)
        throw wrong(key);
    return value.toInteger();
}

QByteArray encode(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace wire
