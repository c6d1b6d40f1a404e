#include "transfer/TasksCsvExport.h"

#include "transfer/CsvTable.h"

#include <QHash>

namespace TasksCsvExport {

QStringList header()
{
    return {QStringLiteral("project"), QStringLiteral("list"), QStringLiteral("title"), QStringLiteral("done"),
        QStringLiteral("due"), QStringLiteral("quadrant"), QStringLiteral("task id"), QStringLiteral("list id"),
        QStringLiteral("project id")};
}

QString write(const TasksSnapshot& snapshot)
{
    QHash<QUuid, QString> projectNames, listNames;
    for (const ProjectEntity& project : snapshot.projects)
        projectNames.insert(project.prjId, project.prjName);
    for (const TaskListEntity& list : snapshot.taskLists)
        listNames.insert(list.talId, list.talName);
    QString text = CsvTable::line(header());
    for (const TaskEntity& task : snapshot.tasks) {
        text += CsvTable::line({projectNames.value(task.prjId), listNames.value(task.talId), task.tasTitle,
            task.tasIsDone ? QStringLiteral("yes") : QStringLiteral("no"),
            task.tasDueDate ? task.tasDueDate->toUTC().toString(Qt::ISODate) : QString(),
            task.tasEisenhowerTag ? EisenhowerTag::rawValue(*task.tasEisenhowerTag) : QString(),
            task.tasId.toString(QUuid::WithoutBraces), task.talId.toString(QUuid::WithoutBraces),
            task.prjId.toString(QUuid::WithoutBraces)});
    }
    return text;
}

} // namespace TasksCsvExport
