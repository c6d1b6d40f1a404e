#pragma once

#include <QByteArray>

// What came back for a UrlRequest.
struct UrlResponse {
    // False when the exchange completed without an HTTP status line; statusCode is 0 then.
    bool isHTTP = true;
    int statusCode = 0;
    QByteArray body;
};
