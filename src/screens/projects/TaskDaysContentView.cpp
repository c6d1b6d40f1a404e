#include "screens/projects/TaskDaysContentView.h"

#include "screens/projects/TaskActions.h"
#include "screens/projects/TaskRowView.h"

#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

namespace {

QLabel* heading(const QString& text, const QString& name, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    label->setContentsMargins(0, 8, 0, 2);
    return label;
}

} // namespace

QList<TaskEntity> TaskDaysContentView::inView(
    ProjectsDetailSelectionEnum view, const QList<TaskEntity>& tasks, const QDate& today)
{
    QList<TaskEntity> shown;
    for (const TaskEntity& task : tasks) {
        const QDate day = task.dueDay().value_or(QDate());
        if (!day.isValid() || task.tasIsDone)
            continue;
        const bool todays = day <= today;
        const bool upcoming = day > today && day <= today.addDays(7);
        if (view == ProjectsDetailSelectionEnum::today ? todays : upcoming)
            shown.append(task);
    }
    return shown;
}

QString TaskDaysContentView::dayHeading(const QDate& day, const QDate& today)
{
    const QString date = QLocale().toString(day, QLocale::LongFormat);
    //% "Tomorrow"
    return day == today.addDays(1) ? qtTrId("tasks-day-view-tomorrow") + QStringLiteral(" · ") + date : date;
}

TaskDaysContentView::TaskDaysContentView(ProjectsDetailSelectionEnum view, const QList<TaskEntity>& tasks,
    const QDate& today, const QHash<QUuid, QString>& places, TaskActions& actions, QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("taskDays"));
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    const QList<TaskEntity> shown = inView(view, tasks, today);
    if (shown.isEmpty()) {
        auto* empty = new QLabel(view == ProjectsDetailSelectionEnum::today
                //% "Nothing due today."
                ? qtTrId("tasks-day-view-today-empty")
                //% "Nothing due in the next seven days."
                : qtTrId("tasks-day-view-upcoming-empty"),
            this);
        empty->setObjectName(QStringLiteral("dayViewEmptyState"));
        empty->setEnabled(false);
        layout->addWidget(empty);
    }
    QString group;
    for (const TaskEntity& task : shown) {
        const QDate day = *task.dueDay();
        QString title;
        if (view == ProjectsDetailSelectionEnum::upcoming)
            title = dayHeading(day, today);
        else if (day < today)
            //% "Overdue"
            title = qtTrId("tasks-due-overdue");
        else
            title = QLocale().toString(day, QLocale::LongFormat);
        if (title != group) {
            group = title;
            QLabel* label = heading(title, QStringLiteral("dayGroup"), this);
            if (view == ProjectsDetailSelectionEnum::today && day < today) {
                label->setProperty("overdue", true);
                QPalette palette = label->palette();
                palette.setColor(QPalette::WindowText, QColor(0xc6, 0x28, 0x28));
                label->setPalette(palette);
            }
            layout->addWidget(label);
        }
        auto* row = new TaskRowView(task, this);
        // Tab reaches the rows themselves here, so Space and Ctrl+E work without a mouse.
        row->setFocusPolicy(Qt::StrongFocus);
        actions.attach(row);
        layout->addWidget(row);
        auto* place = new QLabel(places.value(task.talId), this);
        place->setObjectName(QStringLiteral("taskPlace"));
        place->setTextFormat(Qt::PlainText);
        place->setContentsMargins(30, 0, 0, 4);
        place->setForegroundRole(QPalette::PlaceholderText);
        QFont small = place->font();
        small.setPointSizeF(small.pointSizeF() * 0.85);
        place->setFont(small);
        layout->addWidget(place);
    }
    layout->addStretch(1);
}
