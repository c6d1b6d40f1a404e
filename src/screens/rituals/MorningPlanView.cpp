#include "screens/rituals/MorningPlanView.h"

#include "rituals/RollOver.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScrollArea>

namespace {

QLabel* wrappingLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QGroupBox* section(const QString& title, QWidget* parent)
{
    auto* box = new QGroupBox(title, parent);
    new QVBoxLayout(box);
    return box;
}

void clear(QLayout* layout)
{
    while (QLayoutItem* item = layout->takeAt(0)) {
        delete item->widget();
        delete item;
    }
}

QString bulleted(const QStringList& lines, const QString& whenEmpty)
{
    if (lines.isEmpty())
        return whenEmpty;
    return QStringLiteral("\u2022 ") + lines.join(QStringLiteral("\n\u2022 "));
}

} // namespace

MorningPlanView::MorningPlanView(const AppServices& services, const QDate& today, QWidget* parent)
    : QDialog(parent)
    , m_services(services)
{
    setObjectName(QStringLiteral("morningPlan"));
    m_day.date = today;
    //% "Plan the day"
    setWindowTitle(qtTrId("rituals-plan-title"));
    resize(520, 600);

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    m_title = new QLabel(content);
    QFont font = m_title->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    font.setBold(true);
    m_title->setFont(font);
    layout->addWidget(m_title);

    //% "Left over from earlier days"
    QGroupBox* earlier = section(qtTrId("rituals-plan-earlier"), content);
    auto* earlierLayout = static_cast<QVBoxLayout*>(earlier->layout());
    m_earlier = new QVBoxLayout;
    earlierLayout->addLayout(m_earlier);
    //% "Move all to today"
    m_moveAll = new QPushButton(qtTrId("rituals-plan-move-all"), earlier);
    m_moveAll->setObjectName(QStringLiteral("planMoveAllButton"));
    earlierLayout->addWidget(m_moveAll, 0, Qt::AlignRight);
    connect(m_moveAll, &QPushButton::clicked, this, [this] { moveToToday(m_day.earlierUnfinished); });
    layout->addWidget(earlier);

    //% "Today's checklist"
    QGroupBox* checklist = section(qtTrId("rituals-plan-checklist"), content);
    m_checklist = wrappingLabel(checklist);
    m_checklist->setObjectName(QStringLiteral("planChecklist"));
    checklist->layout()->addWidget(m_checklist);
    layout->addWidget(checklist);

    //% "Today's meets"
    QGroupBox* meets = section(qtTrId("rituals-plan-meets"), content);
    m_meets = wrappingLabel(meets);
    m_meets->setObjectName(QStringLiteral("planMeets"));
    meets->layout()->addWidget(m_meets);
    layout->addWidget(meets);

    //% "Tasks due"
    QGroupBox* due = section(qtTrId("rituals-plan-due-tasks"), content);
    m_dueTasks = wrappingLabel(due);
    m_dueTasks->setObjectName(QStringLiteral("planDueTasks"));
    due->layout()->addWidget(m_dueTasks);
    layout->addWidget(due);

    //% "Projects today"
    QGroupBox* projects = section(qtTrId("rituals-plan-projects"), content);
    m_projects = wrappingLabel(projects);
    m_projects->setObjectName(QStringLiteral("planProjects"));
    projects->layout()->addWidget(m_projects);
    layout->addWidget(projects);
    layout->addStretch(1);

    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(content);

    m_notice = wrappingLabel(this);
    m_notice->setObjectName(QStringLiteral("planNotice"));
    m_notice->hide();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* outer = new QVBoxLayout(this);
    outer->addWidget(scroll, 1);
    outer->addWidget(m_notice);
    outer->addWidget(buttons);
    reload();
}

void MorningPlanView::reload()
{
    m_isLoading = true;
    const quint64 generation = ++m_generation;
    RitualDay::load(m_services, m_day.date, true, this, [this, generation](const RitualDay& day) {
        if (generation != m_generation)
            return;
        m_isLoading = false;
        present(day);
        Q_EMIT loaded();
    });
}

void MorningPlanView::present(const RitualDay& day)
{
    m_day = day;
    m_title->setText(QLocale().toString(day.date, QLocale::LongFormat));
    fillEarlier();
    fillToday();
}

void MorningPlanView::fillEarlier()
{
    clear(m_earlier);
    if (!m_day.failure.isEmpty() || m_day.earlierUnfinished.isEmpty()) {
        QLabel* why = wrappingLabel(nullptr);
        why->setObjectName(QStringLiteral("planEarlierNone"));
        //% "Nothing left over: every earlier day is done."
        why->setText(m_day.failure.isEmpty() ? qtTrId("rituals-plan-nothing-earlier") : m_day.failure);
        m_earlier->addWidget(why);
    }
    for (const DailyTaskEntity& item : std::as_const(m_day.earlierUnfinished)) {
        auto* row = new QWidget;
        row->setObjectName(QStringLiteral("planEarlierRow"));
        auto* rowLayout = new QHBoxLayout(row);
        rowLayout->setContentsMargins(0, 0, 0, 0);
        QLabel* title = wrappingLabel(row);
        title->setText(item.dtaTitle);
        QLabel* when = new QLabel(QLocale().toString(item.dtaDate.toLocalTime().date(), QLocale::ShortFormat), row);
        when->setForegroundRole(QPalette::PlaceholderText);
        //% "Move to today"
        auto* move = new QPushButton(qtTrId("rituals-plan-move-one"), row);
        move->setObjectName(QStringLiteral("planMoveButton"));
        connect(move, &QPushButton::clicked, this, [this, item] { moveToToday({item}); });
        rowLayout->addWidget(title, 1);
        rowLayout->addWidget(when);
        rowLayout->addWidget(move);
        m_earlier->addWidget(row);
    }
    m_moveAll->setEnabled(m_day.earlierUnfinished.size() > 1);
    m_moveAll->setVisible(!m_day.earlierUnfinished.isEmpty());
}

void MorningPlanView::fillToday()
{
    QStringList checklist;
    for (const DailyTaskEntity& item : std::as_const(m_day.dailyTasks))
        checklist.append((item.dtaIsDone ? QStringLiteral("\u2713 ") : QString()) + item.dtaTitle);
    //% "Nothing on today's checklist yet."
    m_checklist->setText(bulleted(checklist, qtTrId("rituals-plan-no-checklist")));
    QStringList meets;
    for (const MeetEntity& meet : std::as_const(m_day.meets))
        meets.append(RitualDay::meetLine(meet));
    //% "No meets today."
    m_meets->setText(
        m_day.meetsFailure.isEmpty() ? bulleted(meets, qtTrId("rituals-plan-no-meets")) : m_day.meetsFailure);
    QHash<QUuid, QString> projectNames;
    for (const ProjectEntity& project : std::as_const(m_day.allProjects))
        projectNames.insert(project.prjId, project.prjName);
    QStringList due;
    for (const TaskEntity& task : std::as_const(m_day.dueTasks)) {
        // Late ones say so first, with their day; the ones of today say when only if they have a time.
        QString line = task.tasTitle + QStringLiteral(" (") + projectNames.value(task.prjId) + QLatin1Char(')');
        if (*task.dueDay() < m_day.date) {
            line = qtTrId("tasks-due-overdue") + QStringLiteral(": ") + line + QStringLiteral(" \u2014 ")
                + QLocale().toString(*task.dueDay(), QLocale::ShortFormat);
        } else if (task.tasDueHasTime) {
            line += QStringLiteral(" \u2014 ")
                + QLocale().toString(task.tasDueDate->toLocalTime().time(), QLocale::ShortFormat);
        }
        due.append(line);
    }
    //% "Nothing due today."
    m_dueTasks->setText(bulleted(due, qtTrId("tasks-day-view-today-empty")));
    QStringList projects;
    for (const ProjectEntity& project : std::as_const(m_day.projects))
        projects.append(project.prjName);
    //% "No project is shown today."
    m_projects->setText(bulleted(projects, qtTrId("rituals-plan-no-projects")));
}

void MorningPlanView::moveToToday(const QList<DailyTaskEntity>& items)
{
    if (!m_day.applications || items.isEmpty())
        return;
    m_moveAll->setEnabled(false);
    const DailyTasksApplication dailyTasks = m_day.applications->dailyTasks;
    const QDate today = m_day.date;
    runAsync(
        this, [dailyTasks, items, today] { return RollOver::moveToToday(dailyTasks, items, today); },
        [this](const RollOver::Outcome& outcome) {
            QString text = RollOver::movedNotice(outcome.moved);
            if (outcome.failure) {
                m_services.console().appendLine(
                    QStringLiteral("MorningPlanView.moveToToday failed: ") + *outcome.failure);
                text += QLatin1Char(' ') + *outcome.failure;
            }
            m_notice->setText(text);
            m_notice->show();
            Q_EMIT moved(outcome.moved);
            reload();
        });
}
