#pragma once

#include "tasks/entities/BitacoraEntryEntity.h"
#include "tasks/entities/DailyTaskEntity.h"
#include "tasks/entities/ProjectEntity.h"
#include "tasks/entities/TaskEntity.h"
#include "tasks/entities/TaskListEntity.h"
#include "tasks/entities/TaskResultEntity.h"

#include <QList>
#include <QString>

#include <memory>

// Whole entities as a change found or left them. An entity missing from one side did not exist
// on that side: it was created or deleted.
struct TasksState {
    QList<ProjectEntity> projects;
    QList<TaskListEntity> taskLists;
    QList<TaskEntity> tasks;
    QList<DailyTaskEntity> dailyTasks;
    QList<BitacoraEntryEntity> bitacoraEntries;

    bool isEmpty() const
    {
        return projects.isEmpty() && taskLists.isEmpty() && tasks.isEmpty() && dailyTasks.isEmpty()
            && bitacoraEntries.isEmpty();
    }
    friend bool operator==(const TasksState&, const TasksState&) = default;
};

enum class TaskChangeVerbEnum { add, edit, complete, reopen, setTag, setDefault, move, delete_, deleteCompleted };
enum class TaskChangeSubjectEnum { project, taskList, task, dailyTask, bitacoraEntry };

// One completed change a user made, told by the use case that made it.
struct TasksChange {
    TaskChangeVerbEnum verb = TaskChangeVerbEnum::edit;
    TaskChangeSubjectEnum subject = TaskChangeSubjectEnum::task;
    // The name or title of what changed, as the user knows it.
    QString name;
    TasksState before;
    TasksState after;
};

// Hears every change the Tasks use cases complete, so that it can be taken back. Called on the
// thread that ran the use case.
class TaskChangeRecorder {
public:
    virtual ~TaskChangeRecorder() = default;
    virtual void record(const TasksChange& change) = 0;
};

namespace TaskChanges {

// The entities of ids that find still finds; the others are left out.
template <typename Entity, typename Find> QList<Entity> found(const QList<QUuid>& ids, Find&& find)
{
    QList<Entity> entities;
    for (const QUuid& id : ids) {
        const TaskResultEntity result = find(id);
        if (const Entity* entity = result.result ? result.dataAs<Entity>() : nullptr)
            entities.append(*entity);
    }
    return entities;
}

// The identifier of the entity a use case answered with, or fallback.
template <typename Entity, typename IdOf>
QUuid answeredId(const TaskResultEntity& result, const QUuid& fallback, IdOf&& idOf)
{
    const Entity* entity = result.result ? result.dataAs<Entity>() : nullptr;
    return entity ? idOf(*entity) : fallback;
}

// Where each kind of entity sits in a TasksState, and what identifies and names it.
template <typename Entity> struct EntityTraits;
template <> struct EntityTraits<ProjectEntity> {
    static constexpr auto member = &TasksState::projects;
    static constexpr auto subject = TaskChangeSubjectEnum::project;
    static QUuid id(const ProjectEntity& entity) { return entity.prjId; }
    static QString name(const ProjectEntity& entity) { return entity.prjName; }
};
template <> struct EntityTraits<TaskListEntity> {
    static constexpr auto member = &TasksState::taskLists;
    static constexpr auto subject = TaskChangeSubjectEnum::taskList;
    static QUuid id(const TaskListEntity& entity) { return entity.talId; }
    static QString name(const TaskListEntity& entity) { return entity.talName; }
};
template <> struct EntityTraits<TaskEntity> {
    static constexpr auto member = &TasksState::tasks;
    static constexpr auto subject = TaskChangeSubjectEnum::task;
    static QUuid id(const TaskEntity& entity) { return entity.tasId; }
    static QString name(const TaskEntity& entity) { return entity.tasTitle; }
};
template <> struct EntityTraits<DailyTaskEntity> {
    static constexpr auto member = &TasksState::dailyTasks;
    static constexpr auto subject = TaskChangeSubjectEnum::dailyTask;
    static QUuid id(const DailyTaskEntity& entity) { return entity.dtaId; }
    static QString name(const DailyTaskEntity& entity) { return entity.dtaTitle; }
};
template <> struct EntityTraits<BitacoraEntryEntity> {
    static constexpr auto member = &TasksState::bitacoraEntries;
    static constexpr auto subject = TaskChangeSubjectEnum::bitacoraEntry;
    static QUuid id(const BitacoraEntryEntity& entity) { return entity.bteId; }
    // An entry has no name: its first words stand for it.
    static QString name(const BitacoraEntryEntity& entity)
    {
        const QString firstLine = entity.bteContent.section(QLatin1Char('\n'), 0, 0).simplified();
        return firstLine.size() > 40 ? firstLine.left(39) + QChar(0x2026) : firstLine;
    }
};

// Runs work; when it succeeds and recorder listens, tells recorder the entities of ids as they
// were before and after (with the entity the answer names, which a store may have given a new
// identifier). Nothing is told when nothing changed.
template <typename Entity, typename Find, typename Work>
TaskResultEntity recorded(const std::shared_ptr<TaskChangeRecorder>& recorder, TaskChangeVerbEnum verb,
    QList<QUuid> ids, Find&& find, Work&& work)
{
    if (!recorder)
        return work();
    using Traits = EntityTraits<Entity>;
    TasksChange change {.verb = verb, .subject = Traits::subject};
    change.before.*Traits::member = found<Entity>(ids, find);
    TaskResultEntity result = work();
    if (!result.result)
        return result;
    if (const Entity* answered = result.dataAs<Entity>(); answered && !ids.contains(Traits::id(*answered)))
        ids.append(Traits::id(*answered));
    change.after.*Traits::member = found<Entity>(ids, find);
    const QList<Entity>& named
        = (change.after.*Traits::member).isEmpty() ? change.before.*Traits::member : change.after.*Traits::member;
    if (!named.isEmpty())
        change.name = Traits::name(named.first());
    if (change.before != change.after)
        recorder->record(change);
    return result;
}

} // namespace TaskChanges
