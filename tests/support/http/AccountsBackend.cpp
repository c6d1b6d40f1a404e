#include "support/http/AccountsBackend.h"

#include <QJsonDocument>
#include <QMutex>

struct AccountsBackend::State {
    mutable QMutex mutex;
    QHash<QUuid, QJsonObject> users;
    QList<SupportMessage> support;
};

namespace {

// The body's string members named by keys, or the reason it is refused.
std::optional<QJsonObject> stringsOf(const QByteArray& body, const QStringList& keys, QByteArray& reason)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (!document.isObject()) {
        reason = "body is not a JSON object";
        return std::nullopt;
    }
    const QJsonObject object = document.object();
    for (const QString& key : keys) {
        if (!object.value(key).isString()) {
            reason = "missing or non-string " + key.toUtf8();
            return std::nullopt;
        }
    }
    return object;
}

const QStringList userKeys {QStringLiteral("usrFirstName"), QStringLiteral("usrLastName"), QStringLiteral("usrEmail")};

} // namespace

AccountsBackend::AccountsBackend(FakeBackend& backend)
    : m_state(std::make_shared<State>())
{
    auto state = m_state;
    backend.route("POST", QStringLiteral("/v0/users"), [state](const RecordedRequest& request, const QStringList&) {
        QByteArray reason;
        const auto fields = stringsOf(request.body, userKeys, reason);
        if (!fields)
            return FakeResponse::text(400, reason);
        const QMutexLocker locker(&state->mutex);
        if (state->users.contains(request.userId))
            return FakeResponse::json(200, state->users.value(request.userId));
        QJsonObject user = *fields;
        user.insert(QStringLiteral("usrId"), request.userId.toString(QUuid::WithoutBraces).toUpper());
        user.insert(QStringLiteral("usrIsGoogleAccount"), true);
        state->users.insert(request.userId, user);
        return FakeResponse::json(201, user);
    });
    backend.route(
        "PUT", QStringLiteral("/v0/users/{id}"), [state](const RecordedRequest& request, const QStringList& ids) {
            const QMutexLocker locker(&state->mutex);
            if (QUuid::fromString(ids.first()) != request.userId || !state->users.contains(request.userId))
                return FakeResponse::text(404, "no such user");
            QByteArray reason;
            const auto fields = stringsOf(request.body, userKeys, reason);
            if (!fields)
                return FakeResponse::text(400, reason);
            QJsonObject& user = state->users[request.userId];
            for (const QString& key : userKeys)
                user.insert(key, fields->value(key));
            return FakeResponse::json(200, user);
        });
    backend.route("POST", QStringLiteral("/v0/support"), [state](const RecordedRequest& request, const QStringList&) {
        QByteArray reason;
        const auto fields = stringsOf(request.body, {QStringLiteral("supMessage")}, reason);
        if (!fields)
            return FakeResponse::text(400, reason);
        const QString message = fields->value(QStringLiteral("supMessage")).toString();
        const QMutexLocker locker(&state->mutex);
        state->support.append({request.userId, message});
        return FakeResponse::json(201,
            QJsonObject {{QStringLiteral("supId"), QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()},
                {QStringLiteral("supUserId"), request.userId.toString(QUuid::WithoutBraces).toUpper()},
                {QStringLiteral("supType"), QStringLiteral("support")},
                {QStringLiteral("supDate"),
                    QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")) + QLatin1Char('Z')},
                {QStringLiteral("supMessage"), message}});
    });
}

std::optional<QJsonObject> AccountsBackend::user(const QUuid& userId) const
{
    const QMutexLocker locker(&m_state->mutex);
    const auto found = m_state->users.constFind(userId);
    if (found == m_state->users.constEnd())
        return std::nullopt;
    return found.value();
}

QList<AccountsBackend::SupportMessage> AccountsBackend::supportMessages() const
{
    const QMutexLocker locker(&m_state->mutex);
    return m_state->support;
}
