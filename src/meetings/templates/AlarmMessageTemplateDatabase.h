#pragma once

#include "platform/UserDefaults.h"

#include <QByteArray>

#include <optional>

// The one stored template: its JSON bytes in the user defaults.
class AlarmMessageTemplateDatabase {
public:
    static inline const QString key = QStringLiteral("Meetings.AlarmMessageTemplateDatabase.template");

    explicit AlarmMessageTemplateDatabase(UserDefaults defaults);

    std::optional<QByteArray> templateData() const;
    void setTemplateData(const QByteArray& data);

private:
    UserDefaults m_defaults;
};
