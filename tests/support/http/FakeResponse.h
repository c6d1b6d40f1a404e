#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QList>

#include <chrono>
#include <utility>

// What the test server answers, and how: after a delay, or not at all.
struct FakeResponse {
    int status = 200;
    QByteArray body;
    QByteArray contentType = "application/json";
    QList<std::pair<QByteArray, QByteArray>> headers;
    // Wait this long before answering.
    std::chrono::milliseconds delay {0};
    // Close the connection once the request has been read, without a byte of response.
    bool dropConnection = false;

    static FakeResponse json(int status, const QJsonValue& value);
    static FakeResponse text(int status, QByteArray body);
    static FakeResponse empty(int status);
    static FakeResponse dropped();

    FakeResponse delayed(std::chrono::milliseconds by) const
    {
        FakeResponse copy = *this;
        copy.delay = by;
        return copy;
    }
};
