#include "support/http/FakeResponse.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

FakeResponse FakeResponse::json(int status, const QJsonValue& value)
{
    FakeResponse response;
    response.status = status;
    if (value.isObject())
        response.body = QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
    else if (value.isArray())
        response.body = QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact);
    else {
        const QByteArray wrapped = QJsonDocument(QJsonArray {value}).toJson(QJsonDocument::Compact);
        response.body = wrapped.mid(1, wrapped.size() - 2);
    }
    return response;
}

FakeResponse FakeResponse::text(int status, QByteArray body)
{
    FakeResponse response;
    response.status = status;
    response.body = std::move(body);
    response.contentType = "text/plain; charset=utf-8";
    return response;
}

FakeResponse FakeResponse::empty(int status)
{
    FakeResponse response;
    response.status = status;
    response.contentType.clear();
    return response;
}

FakeResponse FakeResponse::dropped()
{
    FakeResponse response;
    response.dropConnection = true;
    return response;
}
