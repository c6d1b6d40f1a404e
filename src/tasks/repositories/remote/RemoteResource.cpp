#include "tasks/repositories/remote/RemoteResource.h"

#include "wire/JSONCoding.h"

RemoteResource::RemoteResource(QString collectionPath, QString notFoundText, QString badIdText)
    : m_collectionPath(std::move(collectionPath))
    , m_notFoundText(std::move(notFoundText))
    , m_badIdText(std::move(badIdText))
{
}

QString RemoteResource::path(const QUuid& id) const
{
    return m_collectionPath + QLatin1Char('/') + JSONCoding::encodeUUID(id);
}

std::optional<QUuid> RemoteResource::parseUUID(const QString& text)
{
    if (text.size() != 36)
        return std::nullopt;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool dashExpected = i == 8 || i == 13 || i == 18 || i == 23;
        const bool isHex = (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            || (c >= QLatin1Char('a') && c <= QLatin1Char('f')) || (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
        if (dashExpected ? c != QLatin1Char('-') : !isHex)
            return std::nullopt;
    }
    return QUuid::fromString(text);
}
