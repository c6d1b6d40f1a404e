#include "meetings/templates/AlarmMessageApplication.h"

#include "meetings/templates/AlarmMessageDomain.h"

AlarmMessageApplication::AlarmMessageApplication(std::shared_ptr<AlarmMessageTemplateRepository> repository)
    : repository(std::move(repository))
{
}

QString AlarmMessageApplication::loadTemplateText() const
{
    const std::optional<AlarmMessageTemplateEntity> stored = repository->loadTemplate();
    return stored ? stored->amtText : QString();
}

void AlarmMessageApplication::saveTemplateText(const QString& text) const
{
    AlarmMessageDomain::validate(text);
    repository->saveTemplate(AlarmMessageTemplateEntity {text});
}

QString AlarmMessageApplication::message(const QString& meetName, const QString& defaultSentence) const
{
    const QString text = loadTemplateText();
    if (text.isEmpty())
        return defaultSentence;
    return AlarmMessageDomain::render(text, meetName);
}
