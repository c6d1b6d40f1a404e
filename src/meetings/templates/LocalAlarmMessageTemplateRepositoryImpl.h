#pragma once

#include "meetings/templates/AlarmMessageTemplateDatabase.h"
#include "meetings/templates/AlarmMessageTemplateRepository.h"

class LocalAlarmMessageTemplateRepositoryImpl final : public AlarmMessageTemplateRepository {
public:
    explicit LocalAlarmMessageTemplateRepositoryImpl(AlarmMessageTemplateDatabase database);

    std::optional<AlarmMessageTemplateEntity> loadTemplate() const override;
    void saveTemplate(const AlarmMessageTemplateEntity& entity) override;

private:
    AlarmMessageTemplateDatabase m_database;
};
