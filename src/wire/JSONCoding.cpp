#include "wire/JSONCoding.h"

#include <QJsonDocument>
#include <QRegularExpression>
#include <QTimeZone>

namespace JSONCoding {

QJsonValue parse(const QByteArray& data)
{
    // Most bodies are an object or an array, which need no wrapping.
    const QByteArray trimmed = data.trimmed();
    if (trimmed.startsWith('{') || trimmed.startsWith('[')) {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(data, &error);
        if (error.error == QJsonParseError::NoError)
            return document.isObject() ? QJsonValue(document.object()) : QJsonValue(document.array());
    }
    // QJsonDocument only takes an object or an array at the top level; wrapping the text in an
    // array admits any value, and exactly one element proves the text was one value.
    QByteArray wrapped;
    wrapped.reserve(data.size() + 2);
    wrapped.append('[').append(data).append(']');
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(wrapped, &error);
    if (error.error != QJsonParseError::NoError) {
        throw DecodingError(QStringLiteral("The given data was not valid JSON: %1 at offset %2.")
                                .arg(error.errorString())
                                .arg(qMax(0, error.offset - 1)));
    }
    const QJsonArray array = document.array();
    if (array.size() != 1) {
        throw DecodingError(array.isEmpty()
                ? QStringLiteral("The given data was not valid JSON: it is empty.")
                : QStringLiteral("The given data was not valid JSON: more than one value."));
    }
    return array.first();
}

QByteArray serialize(const QJsonValue& value)
{
    if (value.isObject())
        return QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
    if (value.isArray())
        return QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact);
    const QByteArray wrapped = QJsonDocument(QJsonArray {value}).toJson(QJsonDocument::Compact);
    return wrapped.mid(1, wrapped.size() - 2);
}

QString encodeDate(const QDateTime& date)
{
    JSONWriter out;
    out.date(date);
    const std::string& text = out.text();
    // Without the quotes.
    return QString::fromLatin1(text.data() + 1, qsizetype(text.size()) - 2);
}

QDateTime decodeDate(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(\\d{4})-(\\d{2})-(\\d{2})T(\\d{2}):(\\d{2}):(\\d{2})(?:(Z)|([+-])(\\d{2}):?(\\d{2}))$"));
    const QRegularExpressionMatch match = pattern.match(text);
    const QDate day(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
    const QTime time(match.captured(4).toInt(), match.captured(5).toInt(), match.captured(6).toInt());
    if (!match.hasMatch() || !day.isValid() || !time.isValid())
        throw DecodingError(QStringLiteral("Expected date string to be ISO8601-formatted."));
    int offsetSeconds = 0;
    if (match.captured(7).isEmpty()) {
        const int hours = match.captured(9).toInt();
        const int minutes = match.captured(10).toInt();
        if (hours > 23 || minutes > 59)
            throw DecodingError(QStringLiteral("Expected date string to be ISO8601-formatted."));
        offsetSeconds = (hours * 3600 + minutes * 60) * (match.captured(8) == QLatin1String("-") ? -1 : 1);
    }
    return QDateTime(day, time, Qt::OffsetFromUTC, offsetSeconds).toUTC();
}

QString encodeUUID(const QUuid& uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}

QString describe(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Null:
        return QStringLiteral("null");
    case QJsonValue::Bool:
        return QStringLiteral("a boolean");
    case QJsonValue::Double:
        return QStringLiteral("a number");
    case QJsonValue::String:
        return QStringLiteral("a string");
    case QJsonValue::Array:
        return QStringLiteral("an array");
    case QJsonValue::Object:
        return QStringLiteral("an object");
    case QJsonValue::Undefined:
        break;
    }
    return QStringLiteral("nothing");
}

QJsonObject Decoder<QJsonObject>::decode(const QJsonValue& json)
{
    if (!json.isObject())
        throw DecodingError(QStringLiteral("Expected an object but found %1 instead.").arg(describe(json)));
    return json.toObject();
}

QJsonArray Decoder<QJsonArray>::decode(const QJsonValue& json)
{
    if (!json.isArray())
        throw DecodingError(QStringLiteral("Expected an array but found %1 instead.").arg(describe(json)));
    return json.toArray();
}

} // namespace JSONCoding
