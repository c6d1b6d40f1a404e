#include "platform/ResultEntity.h"

#include <QUuid>

namespace {

ResultEntity blank(bool succeeded)
{
    ResultEntity entity;
    entity.guidId = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    entity.result = succeeded;
    return entity;
}

ResultEntity failing(std::optional<QString> ResultEntity::*field, const QString& text)
{
    ResultEntity entity = blank(false);
    entity.*field = text;
    return entity;
}

} // namespace

ResultEntity ResultEntity::success(std::any data)
{
    ResultEntity entity = blank(true);
    entity.data = std::move(data);
    return entity;
}

ResultEntity ResultEntity::databaseFailure(const QString& text)
{
    return failing(&ResultEntity::databaseMessage, text);
}

ResultEntity ResultEntity::controllerFailure(const QString& text)
{
    return failing(&ResultEntity::controllerMessage, text);
}

ResultEntity ResultEntity::applicationFailure(const QString& text)
{
    return failing(&ResultEntity::applicationMessage, text);
}

ResultEntity ResultEntity::domainFailure(const QString& text)
{
    return failing(&ResultEntity::domainMessage, text);
}

ResultEntity ResultEntity::infrastructureFailure(const QString& text)
{
    return failing(&ResultEntity::infrastructureMessage, text);
}

ResultEntity ResultEntity::domainCheck(bool passed, const QString& failureText)
{
    return passed ? success() : domainFailure(failureText);
}

std::optional<QString> ResultEntity::firstMessage() const
{
    if (!message.isEmpty())
        return message;
    for (const auto* field :
        {&databaseMessage, &controllerMessage, &applicationMessage, &domainMessage, &infrastructureMessage}) {
        if (*field && !(*field)->isEmpty())
            return **field;
    }
    return std::nullopt;
}
