#include "screens/rituals/DayReviewView.h"

#include "rituals/DayReview.h"
#include "screens/bitacora/BitacoraProjectRowView.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

QLabel* wrappingLabel(QWidget* parent, const QString& name)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QString lines(const QStringList& items)
{
    //% "None."
    return items.isEmpty() ? qtTrId("rituals-review-none")
                           : QStringLiteral("\u2022 ") + items.join(QStringLiteral("\n\u2022 "));
}

} // namespace

DayReviewView::DayReviewView(const AppServices& services, const QDate& day, QWidget* parent)
    : QDialog(parent)
    , m_services(services)
{
    setObjectName(QStringLiteral("dayReview"));
    m_day.date = day;
    //% "Review the day"
    setWindowTitle(qtTrId("rituals-review-title"));
    resize(560, 680);

    m_title = new QLabel(this);
    QFont font = m_title->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    font.setBold(true);
    m_title->setFont(font);

    auto* form = new QFormLayout;
    m_done = wrappingLabel(this, QStringLiteral("reviewDone"));
    m_completed = wrappingLabel(this, QStringLiteral("reviewCompletedTasks"));
    m_meets = wrappingLabel(this, QStringLiteral("reviewMeets"));
    m_left = wrappingLabel(this, QStringLiteral("reviewLeft"));
    //% "Ticked today"
    form->addRow(qtTrId("rituals-review-ticked"), m_done);
    //% "Tasks completed"
    form->addRow(qtTrId("rituals-review-completed"), m_completed);
    form->addRow(qtTrId("rituals-plan-meets"), m_meets);
    //% "Still open"
    form->addRow(qtTrId("rituals-review-open"), m_left);

    //% "Summary for the logbook (you can edit it)"
    auto* summaryBox = new QGroupBox(qtTrId("rituals-review-summary"), this);
    auto* summaryLayout = new QVBoxLayout(summaryBox);
    m_summary = new QPlainTextEdit(summaryBox);
    m_summary->setObjectName(QStringLiteral("reviewSummary"));
    summaryLayout->addWidget(m_summary);
    //% "Add it to the day's entry of:"
    summaryLayout->addWidget(new QLabel(qtTrId("rituals-review-projects"), summaryBox));
    m_projects = new QVBoxLayout;
    summaryLayout->addLayout(m_projects);

    m_notice = wrappingLabel(this, QStringLiteral("reviewNotice"));
    m_notice->hide();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    //% "Write to the logbook"
    m_write = buttons->addButton(qtTrId("rituals-review-write"), QDialogButtonBox::ActionRole);
    m_write->setObjectName(QStringLiteral("reviewWriteButton"));
    m_write->setEnabled(false);
    connect(m_write, &QPushButton::clicked, this, &DayReviewView::writeToLogbook);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_title);
    layout->addLayout(form);
    layout->addWidget(summaryBox, 1);
    layout->addWidget(m_notice);
    layout->addWidget(buttons);
    reload();
}

void DayReviewView::reload()
{
    m_isLoading = true;
    const quint64 generation = ++m_generation;
    RitualDay::load(m_services, m_day.date, false, this, [this, generation](const RitualDay& day) {
        if (generation != m_generation)
            return;
        m_isLoading = false;
        present(day);
        Q_EMIT loaded();
    });
}

void DayReviewView::present(const RitualDay& day)
{
    m_day = day;
    m_title->setText(QLocale().toString(day.date, QLocale::LongFormat));
    QStringList done;
    QStringList left;
    for (const DailyTaskEntity& item : std::as_const(day.dailyTasks))
        (item.dtaIsDone ? done : left).append(item.dtaTitle);
    QStringList meets;
    for (const MeetEntity& meet : std::as_const(day.meets))
        meets.append(RitualDay::meetLine(meet));
    m_done->setText(day.failure.isEmpty() ? lines(done) : day.failure);
    m_meets->setText(day.meetsFailure.isEmpty() ? lines(meets) : day.meetsFailure);
    m_left->setText(lines(left));
    const QList<DayReview::ProjectTasks> completed = DayReview::byProject(day.completedTasks, day.allProjects);
    QStringList completedLines;
    for (const DayReview::ProjectTasks& group : completed)
        completedLines.append(group.project + QStringLiteral(": ") + group.titles.join(QStringLiteral(", ")));
    m_completed->setText(lines(completedLines));
    m_summary->setPlainText(DayReview::summary({day.date, day.dailyTasks, meets, completed}));

    qDeleteAll(m_projectChoices);
    m_projectChoices.clear();
    for (const ProjectEntity& project : std::as_const(day.projects)) {
        auto* choice = new QCheckBox(project.prjName, this);
        choice->setObjectName(QStringLiteral("reviewProject"));
        choice->setProperty("projectId", project.prjId);
        choice->setChecked(true);
        m_projects->addWidget(choice);
        m_projectChoices.append(choice);
    }
    m_write->setEnabled(day.applications && !m_projectChoices.isEmpty());
}

void DayReviewView::writeToLogbook()
{
    if (!m_day.applications)
        return;
    QList<QUuid> projectIds;
    for (const QCheckBox* choice : std::as_const(m_projectChoices)) {
        if (choice->isChecked())
            projectIds.append(choice->property("projectId").toUuid());
    }
    if (projectIds.isEmpty())
        return;
    m_write->setEnabled(false);
    struct Outcome {
        int written = 0;
        QString failure;
    };
    const BitacoraApplication logbook = m_day.applications->bitacora;
    const QUuid userId = m_day.userId;
    const QDate date = m_day.date;
    const QString summary = m_summary->toPlainText();
    const QString templateText = BitacoraProjectRowView::entryTemplate(date);
    runAsync(
        this,
        [=] {
            Outcome outcome;
            for (const QUuid& projectId : projectIds) {
                const TaskResultEntity saved
                    = DayReview::writeToLogbook(logbook, projectId, userId, date, summary, templateText);
                if (!saved.result) {
                    outcome.failure = saved.firstMessage().value_or(QString());
                    break;
                }
                ++outcome.written;
            }
            return outcome;
        },
        [this, reached = DayReview::Written {date, summary, projectIds}](const Outcome& outcome) mutable {
            //% "Added to %1 logbook entries."
            QString text = qtTrId("rituals-review-written").arg(outcome.written);
            if (!outcome.failure.isEmpty()) {
                m_services.console().appendLine(
                    QStringLiteral("DayReviewView.writeToLogbook failed: ") + outcome.failure);
                text += QLatin1Char(' ') + outcome.failure;
            }
            m_notice->setText(text);
            m_notice->show();
            m_write->setEnabled(true);
            if (outcome.written > 0) {
                reached.projectIds = reached.projectIds.mid(0, outcome.written);
                m_services.notificationCenter().post(DayReview::logbookWritten, QVariant::fromValue(reached));
            }
            Q_EMIT written(outcome.written);
        });
}
