#include "screens/projects/TaskDueText.h"

#include <QLocale>

namespace {

// A week either way reads better in words; beyond that the date itself says more.
constexpr qint64 wordsReach = 6;

QString dayText(QDate day, QDate today)
{
    const qint64 distance = today.daysTo(day);
    if (distance == 0) {
        //% "today"
        return qtTrId("tasks-due-today");
    }
    if (distance == 1) {
        //% "tomorrow"
        return qtTrId("tasks-due-tomorrow");
    }
    if (distance == -1) {
        //% "yesterday"
        return qtTrId("tasks-due-yesterday");
    }
    if (distance > 1 && distance <= wordsReach) {
        //% "in %1 days"
        return qtTrId("tasks-due-in-days").arg(distance);
    }
    if (distance < -1 && distance >= -wordsReach) {
        //% "%1 days ago"
        return qtTrId("tasks-due-days-ago").arg(-distance);
    }
    const QLocale locale;
    if (day.year() == today.year())
        return locale.toString(day,
            locale.dateFormat(QLocale::ShortFormat).contains(QLatin1String("d/M")) ? QStringLiteral("d MMM")
                                                                                   : QStringLiteral("MMM d"));
    return locale.toString(day, QLocale::ShortFormat);
}

} // namespace

namespace TaskDueText {

TaskDueLabel of(const TaskEntity& task, const QDateTime& now)
{
    const std::optional<QDate> day = task.dueDay();
    if (!day)
        return {};
    const QDate today = now.toLocalTime().date();
    TaskDueLabel label;
    label.text = dayText(*day, today);
    if (task.tasDueHasTime)
        label.text
            += QLatin1Char(' ') + QLocale().toString(task.tasDueDate->toLocalTime().time(), QLocale::ShortFormat);
    label.overdue = !task.tasIsDone && (task.tasDueHasTime ? *task.tasDueDate < now : *day < today);
    return label;
}

} // namespace TaskDueText
