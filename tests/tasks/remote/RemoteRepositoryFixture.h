#pragma once

#include "networking/APIClient.h"
#include "support/http/FakeBackend.h"
#include "support/http/TasksBackend.h"
#include "tasks/entities/TaskResultEntity.h"
#include "wire/JSONCoding.h"

#include <QJsonDocument>
#include <QTest>

#include <functional>
#include <memory>

// What the remote repository tests share: a FakeBackend on loopback carrying the task resources,
// an APIClient that talks to it, and checks on what crossed the wire.
namespace RemoteFixture {

class FixedTokenProvider final : public AuthTokenProvider {
public:
    explicit FixedTokenProvider(QString token)
        : m_token(std::move(token))
    {
    }
    QString token() override { return m_token; }

private:
    QString m_token;
};

struct Backend {
    FakeBackend http;
    TasksBackend tasks {http};

    // Logging stays off: what is logged belongs to the API client's own tests.
    APIClient client(const QString& token = {}) const
    {
        return APIClient(http.baseURL(),
            std::make_shared<FixedTokenProvider>(token.isEmpty() ? http.bearerToken() : token), UrlSession::shared(),
            NetworkLogger(false, std::nullopt, nullptr));
    }
};

inline QString upper(const QUuid& id)
{
    return JSONCoding::encodeUUID(id);
}

// Compact JSON with sorted keys, so two bodies compare as text and a mismatch prints readably.
inline QByteArray canonical(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

inline QByteArray canonical(const QByteArray& body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    return document.isObject() ? canonical(document.object()) : "<not a JSON object> " + body;
}

// One request on the wire: method, target (path and query as sent), and body.
inline void verifyRequest(const RecordedRequest& request, const QByteArray& method, const QString& target,
    const std::optional<QJsonObject>& body = std::nullopt)
{
    QCOMPARE(request.method, method);
    QCOMPARE(QString::fromUtf8(request.target), target);
    if (body)
        QCOMPARE(canonical(request.body), canonical(*body));
    else
        QCOMPARE(request.body, QByteArray());
}

inline void verifySucceeded(const TaskResultEntity& outcome)
{
    QVERIFY2(outcome.result, qPrintable(outcome.firstMessage().value_or(QString())));
    QCOMPARE(outcome.firstMessage(), std::nullopt);
}

// Failed in the remote layer with exactly text, and no other layer spoke.
inline void verifyRemoteFailure(const TaskResultEntity& outcome, const QString& text)
{
    QVERIFY(!outcome.result);
    QVERIFY(!outcome.data.has_value());
    QCOMPARE(outcome.infrastructureMessage, std::optional<QString>(text));
    QCOMPARE(outcome.applicationMessage, std::nullopt);
    QCOMPARE(outcome.domainMessage, std::nullopt);
    QCOMPARE(outcome.databaseMessage, std::nullopt);
    QCOMPARE(outcome.controllerMessage, std::nullopt);
}

// Each operation, answered 404 by the backend, fails with the resource's own text.
inline void verifyNotFoundOnEveryOperation(Backend& backend,
    const QList<std::pair<const char*, std::function<TaskResultEntity()>>>& operations, const QString& text)
{
    for (const auto& [name, operation] : operations) {
        backend.http.enqueue(FakeResponse::text(404, "gone"));
        const TaskResultEntity outcome = operation();
        QVERIFY2(!outcome.result, name);
        QVERIFY2(outcome.infrastructureMessage == text,
            qPrintable(QStringLiteral("%1: %2").arg(
                QLatin1String(name), outcome.infrastructureMessage.value_or(QStringLiteral("<none>")))));
    }
}

} // namespace RemoteFixture
