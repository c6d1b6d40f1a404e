#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <chrono>
#include <optional>
#include <utility>

// One HTTP request as UrlSession sends it.
struct UrlRequest {
    QUrl url;
    QByteArray httpMethod = "GET";
    // Sent in this order; setValue replaces a header of the same name.
    QList<std::pair<QByteArray, QByteArray>> headers;
    // No value: no body at all, which is not the same as an empty one.
    std::optional<QByteArray> httpBody;
    // The longest the exchange may stay idle: while connecting, or between bytes received.
    std::chrono::milliseconds timeoutInterval {std::chrono::seconds(60)};

    void setValue(const QByteArray& name, const QByteArray& value)
    {
        for (auto& header : headers) {
            if (header.first.compare(name, Qt::CaseInsensitive) == 0) {
                header.second = value;
                return;
            }
        }
        headers.append({name, value});
    }
};
