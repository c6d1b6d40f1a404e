#pragma once

#include "meetings/templates/AlarmMessageTemplateRepository.h"

#include <memory>

// The template use cases of the alarm settings and of the spoken alarms.
class AlarmMessageApplication {
public:
    explicit AlarmMessageApplication(std::shared_ptr<AlarmMessageTemplateRepository> repository);

    // Empty when none is stored.
    QString loadTemplateText() const;
    // Throws AlarmMessageDomainError and stores nothing when the text is refused.
    void saveTemplateText(const QString& text) const;
    // The rendered template, or defaultSentence when no non-empty template is stored.
    QString message(const QString& meetName, const QString& defaultSentence) const;

    std::shared_ptr<AlarmMessageTemplateRepository> repository;
};
