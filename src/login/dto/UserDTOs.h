#pragma once

#include <QJsonValue>
#include <QString>

// The /v0/users bodies. The caller's identity is not in them: the backend takes it from the bearer.
struct CreateUserRequestDTO {
    QString usrFirstName;
    QString usrLastName;
    QString usrEmail;
    QJsonValue toJson() const;
};

struct UpdateUserRequestDTO {
    QString usrFirstName;
    QString usrLastName;
    QString usrEmail;
    QJsonValue toJson() const;
};

struct UserResponseDTO {
    QString usrId;
    QString usrFirstName;
    QString usrLastName;
    QString usrEmail;
    bool usrIsGoogleAccount = false;
    static UserResponseDTO fromJson(const QJsonValue& json);
};
