#pragma once

#include "storage/RealmDatabase.h"
#include "storage/RealmTable.h"
#include "tasks/database/ProjectRealmModel.h"
#include "tasks/database/TaskListRealmModel.h"
#include "tasks/database/TaskRealmModel.h"

#include <QUuid>

// The heavy account the benchmarks measure: 100 projects x 10 lists x 100 tasks (every seventh
// done), written in one transaction per store.
inline void fillLargeTaskStore(RealmDatabase& projects, RealmDatabase& lists, RealmDatabase& tasks, const QUuid& user)
{
    projects.beginWrite();
    lists.beginWrite();
    tasks.beginWrite();
    for (int p = 0; p < 100; ++p) {
        const ProjectEntity project {
            .prjUserId = user, .prjName = QStringLiteral("Project %1").arg(p, 3, 10, QLatin1Char('0'))};
        RealmTable<ProjectRealmModel>(projects).add(ProjectRealmModel::fromEntity(project));
        for (int l = 0; l < 10; ++l) {
            const TaskListEntity list {
                .prjId = project.prjId, .talName = QStringLiteral("List %1").arg(l), .talIsDefault = l == 0};
            RealmTable<TaskListRealmModel>(lists).add(TaskListRealmModel::fromEntity(list));
            for (int t = 0; t < 100; ++t) {
                const TaskEntity task {.prjId = project.prjId,
                    .talId = list.talId,
                    .tasTitle = QStringLiteral("Task %1").arg(t),
                    .tasIsDone = t % 7 == 0};
                RealmTable<TaskRealmModel>(tasks).add(TaskRealmModel::fromEntity(task));
            }
        }
    }
    projects.commitWrite();
    lists.commitWrite();
    tasks.commitWrite();
}
