#include "meetings/templates/LocalAlarmMessageTemplateRepositoryImpl.h"

LocalAlarmMessageTemplateRepositoryImpl::LocalAlarmMessageTemplateRepositoryImpl(AlarmMessageTemplateDatabase database)
    : m_database(std::move(database))
{
}

std::optional<AlarmMessageTemplateEntity> LocalAlarmMessageTemplateRepositoryImpl::loadTemplate() const
{
    const std::optional<QByteArray> data = m_database.templateData();
    if (!data)
        return std::nullopt;
    return AlarmMessageTemplateEntity::fromJson(*data);
}

void LocalAlarmMessageTemplateRepositoryImpl::saveTemplate(const AlarmMessageTemplateEntity& entity)
{
    m_database.setTemplateData(entity.toJson());
}
