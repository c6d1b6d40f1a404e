#pragma once

#include "meetings/templates/AlarmMessageTemplateEntity.h"

#include <optional>

class AlarmMessageTemplateRepository {
public:
    virtual ~AlarmMessageTemplateRepository() = default;

    // None when nothing is stored or what is stored does not decode.
    virtual std::optional<AlarmMessageTemplateEntity> loadTemplate() const = 0;
    virtual void saveTemplate(const AlarmMessageTemplateEntity& entity) = 0;
};
