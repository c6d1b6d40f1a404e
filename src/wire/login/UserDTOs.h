#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

// The /v0/users bodies. The caller's identity is not in them: the backend takes it from the bearer.
// Registration (POST) and a profile change (PUT) send the same three names.
struct UserProfileRequestDTO {
    QString usrFirstName;
    QString usrLastName;
    QString usrEmail;

    // The server's reading: strict; throws DecodingError.
    static UserProfileRequestDTO fromJson(const QJsonValue& json);
    void writeJson(JSONWriter& out) const;
};

struct UserResponseDTO {
    QString usrId;
    QString usrFirstName;
    QString usrLastName;
    QString usrEmail;
    bool usrIsGoogleAccount = false;

    static UserResponseDTO fromJson(const QJsonValue& json);
    void writeJson(JSONWriter& out) const;
};
