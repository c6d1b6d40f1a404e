#include "meetings/templates/AlarmMessageDomain.h"

#include "meetings/templates/AlarmMessageDomainError.h"

namespace AlarmMessageDomain {

void validate(const QString& templateText)
{
    if (!templateText.isEmpty() && !templateText.contains(placeholder, Qt::CaseSensitive))
        throw AlarmMessageDomainError::missingEventPlaceholder();
}

QString render(const QString& templateText, const QString& meetName)
{
    QString rendered = templateText;
    return rendered.replace(placeholder, meetName, Qt::CaseSensitive);
}

} // namespace AlarmMessageDomain
