#pragma once

#include "wire/DecodingError.h"
#include "wire/JSONWriter.h"

#include <QByteArray>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QUuid>

#include <concepts>
#include <optional>
#include <vector>

// How request and response bodies are turned into C++ values and back.
//
// A response type T is decodable when it is QJsonValue, QJsonArray or QJsonObject (the raw JSON),
// QList<U> or std::vector<U> of a decodable U (a JSON array), or a type with
//
//     static T fromJson(const QJsonValue& json);   // throws DecodingError
//
// A request body type B is encodable when it is QJsonValue, QJsonArray or QJsonObject, QList<U> or
// std::vector<U> of an encodable U, or a type with either of
//
//     void writeJson(JSONWriter& out) const;   // the wire shapes in src/wire
//     QJsonValue toJson() const;
//
// A DTO reads its members with JSONObjectReader, which throws DecodingError with a description
// that names the key, and writes them with JSONWriter, keys in sorted order:
//
//     struct ProjectResponseDTO {
//         QString prjId;
//         QString prjName;
//         static ProjectResponseDTO fromJson(const QJsonValue& json)
//         {
//             const JSONObjectReader reader(json);
//             return { reader.string("prjId"), reader.string("prjName") };
//         }
//         void writeJson(JSONWriter& out) const
//         {
//             out.beginObject().key("prjId").string(prjId).key("prjName").string(prjName).endObject();
//         }
//     };
//
//     auto one = client.get<ProjectResponseDTO>("/v0/projects/" + id);
//     auto all = client.get<QList<ProjectResponseDTO>>("/v0/projects");
//
// JSON keys are exactly the DTO's names; nothing converts their case. Dates are ISO 8601 in UTC
// without fractional seconds ("2026-11-21T09:00:00Z"); on input a numeric offset is accepted too.
namespace JSONCoding {

template <typename T>
concept HasFromJson = requires(const QJsonValue& json)
{
    {
        T::fromJson(json)
        } -> std::convertible_to<T>;
};

template <typename T>
concept HasWriteJson = requires(const T& value, JSONWriter& out)
{
    value.writeJson(out);
};

template <typename T>
concept HasToJson = requires(const T& value)
{
    {
        value.toJson()
        } -> std::convertible_to<QJsonValue>;
};

// Parses a JSON text whose top level may be any value, not only an object or an array.
QJsonValue parse(const QByteArray& data);
// Compact text of any JSON value, top-level fragments included.
QByteArray serialize(const QJsonValue& value);

// "2026-11-21T09:00:00Z": the instant in UTC, whole seconds.
QString encodeDate(const QDateTime& date);
// Accepts "yyyy-MM-ddTHH:mm:ss" followed by "Z" or an offset such as "+05:00"; anything else
// throws DecodingError.
QDateTime decodeDate(const QString& text);

// Identifiers travel in the upper-case textual form without braces.
QString encodeUUID(const QUuid& uuid);

// The name of the JSON type of a value, for error descriptions: "a string", "an object", ...
QString describe(const QJsonValue& value);

template <typename T> struct Decoder;

template <typename T> T decodeValue(const QJsonValue& json)
{
    return Decoder<T>::decode(json);
}

// Parses data and decodes it into T; every failure is a DecodingError.
template <typename T> T decode(const QByteArray& data)
{
    return decodeValue<T>(parse(data));
}

template <HasFromJson T> struct Decoder<T> {
    static T decode(const QJsonValue& json) { return T::fromJson(json); }
};

template <> struct Decoder<QJsonValue> {
    static QJsonValue decode(const QJsonValue& json) { return json; }
};

template <> struct Decoder<QJsonObject> {
    static QJsonObject decode(const QJsonValue& json);
};

template <> struct Decoder<QJsonArray> {
    static QJsonArray decode(const QJsonValue& json);
};

template <typename U> struct Decoder<QList<U>> {
    static QList<U> decode(const QJsonValue& json)
    {
        const QJsonArray array = Decoder<QJsonArray>::decode(json);
        QList<U> result;
        result.reserve(array.size());
        for (qsizetype i = 0; i < array.size(); ++i) {
            try {
                result.append(decodeValue<U>(array.at(i)));
            } catch (const DecodingError& error) {
                throw DecodingError(QStringLiteral("[%1]: ").arg(i) + error.localizedDescription());
            }
        }
        return result;
    }
};

template <typename U> struct Decoder<std::vector<U>> {
    static std::vector<U> decode(const QJsonValue& json)
    {
        const QList<U> list = Decoder<QList<U>>::decode(json);
        return std::vector<U>(list.begin(), list.end());
    }
};

// The compact JSON text of a wire shape.
template <HasWriteJson T> std::string encode(const T& value)
{
    JSONWriter out;
    value.writeJson(out);
    return std::move(out).text();
}

template <typename T> QJsonValue encodeValue(const T& value)
{
    if constexpr (std::is_same_v<T, QJsonValue> || std::is_same_v<T, QJsonObject> || std::is_same_v<T, QJsonArray>) {
        return QJsonValue(value);
    } else if constexpr (HasWriteJson<T>) {
        return parse(QByteArray::fromStdString(encode(value)));
    } else if constexpr (HasToJson<T>) {
        return value.toJson();
    } else {
        QJsonArray array;
        for (const auto& element : value)
            array.append(encodeValue(element));
        return array;
    }
}

} // namespace JSONCoding
