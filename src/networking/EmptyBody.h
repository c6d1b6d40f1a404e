#pragma once

#include <QJsonObject>
#include <QJsonValue>

// A request body with nothing in it; it encodes as "{}".
struct EmptyBody {
    QJsonValue toJson() const { return QJsonObject(); }
};
