#include "tasks/repositories/local/LocalProjectRepositoryImpl.h"

#include "storage/RealmValue.h"
#include "tasks/database/ProjectRealmModel.h"
#include "tasks/repositories/local/LocalStore.h"

LocalProjectRepositoryImpl::LocalProjectRepositoryImpl(ProjectsDatabase database)
    : database(std::move(database))
{
}

TaskResultEntity LocalProjectRepositoryImpl::create(const ProjectEntity& project)
{
    return LocalStore::add<ProjectRealmModel>(database.configuration, project);
}

TaskResultEntity LocalProjectRepositoryImpl::update(const ProjectEntity& project)
{
    return LocalStore::update<ProjectRealmModel>(database.configuration, project, TaskMessages::Project::notFound);
}

TaskResultEntity LocalProjectRepositoryImpl::delete_(const QUuid& projectId)
{
    return LocalStore::remove<ProjectRealmModel>(
        database.configuration, RealmValue::fromUuid(projectId), TaskMessages::Project::notFound);
}

TaskResultEntity LocalProjectRepositoryImpl::find(const QUuid& projectId)
{
    return LocalStore::find<ProjectRealmModel>(
        database.configuration, RealmValue::fromUuid(projectId), TaskMessages::Project::notFound);
}

TaskResultEntity LocalProjectRepositoryImpl::list(const QUuid& userId)
{
    return LocalStore::listWhere<ProjectRealmModel>(
        database.configuration, QStringLiteral("prjUserId"), RealmValue::fromUuid(userId));
}
