#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The user's own alarm sentence; "{event}" stands for the meet's name.
struct AlarmMessageTemplateEntity {
    QString amtText;

    // {"amtText": ...}
    QByteArray toJson() const;
    // None when the bytes are not such an object.
    static std::optional<AlarmMessageTemplateEntity> fromJson(const QByteArray& json);

    friend bool operator==(const AlarmMessageTemplateEntity&, const AlarmMessageTemplateEntity&) = default;
};
