#pragma once

#include <QString>

namespace AlarmMessageDomain {

// Case-sensitive, braces included.
inline const QString placeholder = QStringLiteral("{event}");

// An empty text is valid (it means the default sentence); any other must hold the placeholder,
// untrimmed. Throws AlarmMessageDomainError.
void validate(const QString& templateText);

// Every placeholder replaced by the name, literally.
QString render(const QString& templateText, const QString& meetName);

} // namespace AlarmMessageDomain
