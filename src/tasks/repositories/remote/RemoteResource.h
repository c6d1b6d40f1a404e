#pragma once

#include "networking/APIError.h"
#include "networking/APIErrorMessageEnum.h"
#include "tasks/entities/TaskResultEntity.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>
#include <type_traits>

// What every remote repository of the module does alike, said once: where a resource lives, how
// a failed call is reported, and how identifiers sent back by the backend are trusted.
//
//     return projects.call([&] {
//         return projects.one(toEntity(client.get<ProjectResponseDTO>(projects.path(id))));
//     });
class RemoteResource {
public:
    // collectionPath: "/v0/projects"; the texts are the resource's own for a 404 and for an
    // identifier from the backend that does not read as a UUID.
    RemoteResource(QString collectionPath, QString notFoundText, QString badIdText);

    const QString& path() const { return m_collectionPath; }
    // The collection's path + "/" + the upper-case UUID.
    QString path(const QUuid& id) const;

    // Runs call, which returns the result; an APIError it throws becomes a failure whose
    // infrastructureMessage is the text APIErrorMessageEnum gives, this resource's own for a 404.
    template <typename Call> TaskResultEntity call(Call&& call) const
    {
        try {
            return call();
        } catch (const APIError& error) {
            return TaskResultEntity::infrastructureFailure(APIErrorMessageEnum::message(error, m_notFoundText));
        }
    }

    // One object that came back: the entity, or the bad-identifier failure when it had none.
    template <typename Entity> TaskResultEntity one(const std::optional<Entity>& entity) const
    {
        if (!entity)
            return TaskResultEntity::infrastructureFailure(m_badIdText);
        return TaskResultEntity::success(*entity);
    }

    // A list that came back: one bad element must not hide the user's other data, so the elements
    // whose identifiers do not read are left out; the rest keep the backend's order.
    template <typename DTO, typename Convert> static TaskResultEntity many(const QList<DTO>& dtos, Convert toEntity)
    {
        using Entity = typename std::invoke_result_t<Convert, const DTO&>::value_type;
        QList<Entity> entities;
        entities.reserve(dtos.size());
        for (const DTO& dto : dtos) {
            if (std::optional<Entity> entity = toEntity(dto))
                entities.append(std::move(*entity));
        }
        return TaskResultEntity::success(entities);
    }

    // Only the canonical 8-4-4-4-12 hexadecimal form, in either letter case, as the platform's
    // standard parser takes it; no braces, no URN prefix, no surrounding spaces.
    static std::optional<QUuid> parseUUID(const QString& text);

private:
    QString m_collectionPath;
    QString m_notFoundText;
    QString m_badIdText;
};
