#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>
#include <string>

// The JSON shapes the client sends and reads: identifiers as upper-case canonical UUIDs, dates
// as ISO 8601 in UTC with whole seconds (the client refuses fractions).
namespace wire {

// A refused request; the reason is for the caller and carries no user content.
struct Refusal {
    int status;
    std::string reason;
};

// The canonical lower-case form PostgreSQL takes, or nothing when text is not a UUID.
std::optional<std::string> uuid(const QString& text);
// What the client reads: upper case.
QString uuidOut(const std::string& stored);

// Seconds since the epoch of an ISO 8601 date-time with "Z" or an offset; fractions are dropped.
std::optional<qint64> dateIn(const QString& text);
QString dateOut(qint64 secondsSinceEpoch);
std::string dateText(qint64 secondsSinceEpoch);

// The body as a JSON object whose keys are all among allowed; throws Refusal 400.
QJsonObject object(const std::string& body, std::initializer_list<const char*> allowed);

QString text(const QJsonObject& body, const char* key);
// A text that must not be blank (names and titles).
QString name(const QJsonObject& body, const char* key);
bool flag(const QJsonObject& body, const char* key);
std::string uuidField(const QJsonObject& body, const char* key);
qint64 date(const QJsonObject& body, const char* key);
std::optional<qint64> optionalDate(const QJsonObject& body, const char* key);
qint64 integer(const QJsonObject& body, const char* key);

QByteArray encode(const QJsonObject& object);

} // namespace wire
