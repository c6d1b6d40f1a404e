#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>
#include <utility>

// One request exactly as it arrived at the test server.
struct RecordedRequest {
    QByteArray method;
    // The request target from the request line, still percent-encoded: "/v0/tasks?day=2026-11-21".
    QByteArray target;
    // The target's path, percent-decoded.
    QString path;
    // The raw text after '?'; no value when the target had no '?' at all.
    std::optional<QByteArray> query;
    // Header lines in the order they came, names as sent.
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    // The user whose bearer token came with it; null when none was accepted.
    QUuid userId;

    // The first header of that name, compared without case; empty when missing.
    QByteArray header(const QByteArray& name) const;
    bool hasHeader(const QByteArray& name) const;
    // The query's items, percent-decoded, in order.
    QList<std::pair<QString, QString>> queryItems() const;
};
