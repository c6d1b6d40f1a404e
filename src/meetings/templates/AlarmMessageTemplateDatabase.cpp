#include "meetings/templates/AlarmMessageTemplateDatabase.h"

AlarmMessageTemplateDatabase::AlarmMessageTemplateDatabase(UserDefaults defaults)
    : m_defaults(std::move(defaults))
{
}

std::optional<QByteArray> AlarmMessageTemplateDatabase::templateData() const
{
    const QVariant stored = m_defaults.value(key);
    // Anything but a data value (a hand-edited string, say) is not ours to decode.
    if (stored.typeId() != QMetaType::QByteArray)
        return std::nullopt;
    return stored.toByteArray();
}

void AlarmMessageTemplateDatabase::setTemplateData(const QByteArray& data)
{
    m_defaults.setValue(key, data);
}
