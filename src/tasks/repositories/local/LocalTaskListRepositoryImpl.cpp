#include "tasks/repositories/local/LocalTaskListRepositoryImpl.h"

#include "storage/RealmValue.h"
#include "tasks/database/TaskListRealmModel.h"
#include "tasks/repositories/local/LocalStore.h"

LocalTaskListRepositoryImpl::LocalTaskListRepositoryImpl(TaskListsDatabase database)
    : database(std::move(database))
{
}

TaskResultEntity LocalTaskListRepositoryImpl::create(const TaskListEntity& taskList)
{
    return LocalStore::add<TaskListRealmModel>(database.configuration, taskList);
}

TaskResultEntity LocalTaskListRepositoryImpl::update(const TaskListEntity& taskList)
{
    return LocalStore::update<TaskListRealmModel>(database.configuration, taskList, TaskMessages::TaskList::notFound);
}

TaskResultEntity LocalTaskListRepositoryImpl::delete_(const QUuid& taskListId)
{
    return LocalStore::remove<TaskListRealmModel>(
        database.configuration, RealmValue::fromUuid(taskListId), TaskMessages::TaskList::notFound);
}

TaskResultEntity LocalTaskListRepositoryImpl::find(const QUuid& taskListId)
{
    return LocalStore::find<TaskListRealmModel>(
        database.configuration, RealmValue::fromUuid(taskListId), TaskMessages::TaskList::notFound);
}

TaskResultEntity LocalTaskListRepositoryImpl::list(const QUuid& projectId)
{
    return LocalStore::listWhere<TaskListRealmModel>(
        database.configuration, QStringLiteral("prjId"), RealmValue::fromUuid(projectId));
}

TaskResultEntity LocalTaskListRepositoryImpl::listOfProjects(const QList<QUuid>& projectIds)
{
    return LocalStore::listWhereIn<TaskListRealmModel>(database.configuration, QStringLiteral("prjId"), projectIds);
}
