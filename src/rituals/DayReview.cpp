#include "rituals/DayReview.h"

#include "rituals/RollOver.h"

namespace DayReview {

namespace {

void addSection(QStringList& lines, const QString& title, const QStringList& items)
{
    if (items.isEmpty())
        return;
    lines.append(title);
    for (const QString& item : items)
        lines.append(QStringLiteral("- ") + item);
}

} // namespace

QList<ProjectTasks> byProject(const QList<TaskEntity>& tasks, const QList<ProjectEntity>& projects)
{
    QList<ProjectTasks> grouped;
    for (const ProjectEntity& project : projects) {
        ProjectTasks group {project.prjName, {}};
        for (const TaskEntity& task : tasks) {
            if (task.prjId == project.prjId)
                group.titles.append(task.tasTitle);
        }
        if (!group.titles.isEmpty())
            grouped.append(group);
    }
    return grouped;
}

QString summary(const Day& day)
{
    QStringList done;
    QStringList left;
    for (const DailyTaskEntity& task : day.dailyTasks)
        (task.dtaIsDone ? done : left).append(task.dtaTitle);
    QStringList lines;
    //% "Review of the day"
    lines.append(qtTrId("rituals-review-heading"));
    //% "Done:"
    addSection(lines, qtTrId("rituals-review-done"), done);
    if (!day.completedTasks.isEmpty()) {
        //% "Tasks completed:"
        lines.append(qtTrId("rituals-review-tasks-completed"));
        // Each project, then its tasks one level in.
        for (const ProjectTasks& group : day.completedTasks) {
            lines.append(QStringLiteral("- ") + group.project);
            for (const QString& title : group.titles)
                lines.append(QStringLiteral("  - ") + title);
        }
    }
    //% "Meets:"
    addSection(lines, qtTrId("rituals-review-meets"), day.meets);
    //% "Left for another day:"
    addSection(lines, qtTrId("rituals-review-left"), left);
    if (done.isEmpty() && left.isEmpty() && day.meets.isEmpty() && day.completedTasks.isEmpty()) {
        //% "Nothing on the checklist or the calendar today."
        lines.append(qtTrId("rituals-review-empty-day"));
    }
    return lines.join(QLatin1Char('\n'));
}

QString appended(const QString& existing, const QString& summary, const QString& templateText)
{
    const QString added = summary.trimmed();
    if (added.isEmpty())
        return existing;
    if (existing.trimmed().isEmpty())
        return templateText + added;
    if (existing.contains(added))
        return existing;
    // The template's bare bullet waiting for text takes the summary itself.
    if (existing == templateText)
        return existing + added;
    QString text = existing;
    while (!text.endsWith(QStringLiteral("\n\n")))
        text += QLatin1Char('\n');
    return text + added;
}

TaskResultEntity writeToLogbook(const BitacoraApplication& logbook, const QUuid& projectId, const QUuid& userId,
    const QDate& day, const QString& summary, const QString& templateText)
{
    const QDateTime date = RollOver::dateOf(day);
    const TaskResultEntity found = logbook.entriesOn(date, {projectId});
    if (!found.result)
        return found;
    const auto* entries = found.dataAs<QHash<QUuid, BitacoraEntryEntity>>();
    const QString existing = entries && entries->contains(projectId) ? entries->value(projectId).bteContent : QString();
    return logbook.saveText(projectId, date, appended(existing, summary, templateText), userId);
}

} // namespace DayReview
