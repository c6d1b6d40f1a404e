#include "wire/JSONObjectReader.h"

#include <algorithm>
#include <cmath>

JSONObjectReader::JSONObjectReader(const QJsonValue& json)
    : m_object(JSONCoding::Decoder<QJsonObject>::decode(json))
{
}

void JSONObjectReader::refuseOtherKeys(std::initializer_list<QLatin1StringView> known) const
{
    for (auto it = m_object.constBegin(); it != m_object.constEnd(); ++it) {
        if (std::find(known.begin(), known.end(), it.key()) == known.end())
            throw DecodingError(QStringLiteral("Unknown key \"%1\".").arg(it.key()));
    }
}

QJsonValue JSONObjectReader::required(QLatin1StringView key) const
{
    const auto it = m_object.constFind(key);
    if (it == m_object.constEnd())
        throw DecodingError(QStringLiteral("No value associated with key \"%1\".").arg(key));
    return it.value();
}

bool JSONObjectReader::isAbsent(QLatin1StringView key) const
{
    const auto it = m_object.constFind(key);
    return it == m_object.constEnd() || it.value().isNull();
}

void JSONObjectReader::mismatch(QLatin1StringView key, const char* expected) const
{
    throw DecodingError(QStringLiteral("\"%1\": expected %2 but found %3 instead.")
                            .arg(key, QLatin1String(expected), JSONCoding::describe(m_object.value(key))));
}

QString JSONObjectReader::string(QLatin1StringView key) const
{
    const QJsonValue value = required(key);
    if (!value.isString())
        mismatch(key, "a string");
    return value.toString();
}

std::optional<QString> JSONObjectReader::optionalString(QLatin1StringView key) const
{
    if (isAbsent(key))
        return std::nullopt;
    return string(key);
}

bool JSONObjectReader::boolean(QLatin1StringView key) const
{
    const QJsonValue value = required(key);
    if (!value.isBool())
        mismatch(key, "a boolean");
    return value.toBool();
}

std::optional<bool> JSONObjectReader::optionalBoolean(QLatin1StringView key) const
{
    if (isAbsent(key))
        return std::nullopt;
    return boolean(key);
}

qint64 JSONObjectReader::integer(QLatin1StringView key) const
{
    const QJsonValue value = required(key);
    if (!value.isDouble())
        mismatch(key, "a whole number");
    const double number = value.toDouble();
    // Beyond 2^63 the conversion itself would be undefined.
    if (number != std::trunc(number) || std::fabs(number) >= 9223372036854775808.0)
        mismatch(key, "a whole number");
    return value.toInteger();
}

std::optional<qint64> JSONObjectReader::optionalInteger(QLatin1StringView key) const
{
    if (isAbsent(key))
        return std::nullopt;
    return integer(key);
}

double JSONObjectReader::number(QLatin1StringView key) const
{
    const QJsonValue value = required(key);
    if (!value.isDouble())
        mismatch(key, "a number");
    return value.toDouble();
}

std::optional<double> JSONObjectReader::optionalNumber(QLatin1StringView key) const
{
    if (isAbsent(key))
        return std::nullopt;
    return number(key);
}

QDateTime JSONObjectReader::date(QLatin1StringView key) const
{
    const QString text = string(key);
    try {
        return JSONCoding::decodeDate(text);
    } catch (const DecodingError& error) {
        throw DecodingError(QStringLiteral("\"%1\": ").arg(key) + error.localizedDescription());
    }
}

std::optional<QDateTime> JSONObjectReader::optionalDate(QLatin1StringView key) const
{
    if (isAbsent(key))
        return std::nullopt;
    return date(key);
}
