#pragma once

#include <QJsonValue>
#include <QString>

// The one user of the application. usrIsGoogleAccount alone decides between the backend and the
// local stores.
struct UserEntity {
    QString usrId;
    QString usrFirstName;
    QString usrLastName;
    QString usrEmail;
    bool usrIsGoogleAccount = false;

    // JSON keys are the field names.
    QJsonValue toJson() const;
    // Throws DecodingError naming the key that is missing or of the wrong type.
    static UserEntity fromJson(const QJsonValue& json);

    friend bool operator==(const UserEntity&, const UserEntity&) = default;
};
