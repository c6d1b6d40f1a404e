#pragma once

#include "wire/JSONCoding.h"

#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <initializer_list>
#include <optional>

// Reads the members of one JSON object for a DTO's fromJson. Types are strict, as the backend's
// own encoder is: a number is not a boolean, a string is not a number. A missing key fails the
// plain readers; the optional ones answer nullopt for a missing key or null. Every failure is a
// DecodingError that names the key.
class JSONObjectReader {
public:
    // Throws DecodingError unless json is an object.
    explicit JSONObjectReader(const QJsonValue& json);

    bool contains(QLatin1StringView key) const { return m_object.contains(key); }
    // For bodies read strictly, as the server reads requests: a key outside known throws
    // DecodingError, since a client that sends one expects something this side would not do.
    void refuseOtherKeys(std::initializer_list<QLatin1StringView> known) const;
    const QJsonObject& object() const { return m_object; }

    QString string(QLatin1StringView key) const;
    std::optional<QString> optionalString(QLatin1StringView key) const;
    bool boolean(QLatin1StringView key) const;
    std::optional<bool> optionalBoolean(QLatin1StringView key) const;
    // A whole number; 2.5 or 1e300 fail.
    qint64 integer(QLatin1StringView key) const;
    std::optional<qint64> optionalInteger(QLatin1StringView key) const;
    double number(QLatin1StringView key) const;
    std::optional<double> optionalNumber(QLatin1StringView key) const;
    QDateTime date(QLatin1StringView key) const;
    std::optional<QDateTime> optionalDate(QLatin1StringView key) const;

    // A nested value of any decodable type (a DTO, a QList of DTOs, raw JSON).
    template <typename T> T decode(QLatin1StringView key) const
    {
        const QJsonValue json = required(key);
        try {
            return JSONCoding::decodeValue<T>(json);
        } catch (const DecodingError& error) {
            throw DecodingError(QLatin1Char('"') + QString(key) + QLatin1String("\": ") + error.localizedDescription());
        }
    }

    template <typename T> std::optional<T> optionalDecode(QLatin1StringView key) const
    {
        if (isAbsent(key))
            return std::nullopt;
        return decode<T>(key);
    }

private:
    QJsonValue required(QLatin1StringView key) const;
    bool isAbsent(QLatin1StringView key) const;
    [[noreturn]] void mismatch(QLatin1StringView key, const char* expected) const;

    QJsonObject m_object;
};
