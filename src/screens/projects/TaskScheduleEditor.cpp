#include "screens/projects/TaskScheduleEditor.h"

#include "tasks/reminders/TaskReminderTime.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QTimeEdit>
#include <QToolButton>

namespace {

enum Monthly { sameDay, lastDay, sameWeekday };
enum End { never, afterCount, onDate };

// Reminder choices in minutes before the due time.
const QList<int> reminderMinutes {0, 5, 10, 15, 30, 60, 120, 24 * 60};

QString reminderText(int minutes)
{
    if (minutes == 0) {
        //% "At the due time"
        return qtTrId("tasks-schedule-reminder-at-time");
    }
    if (minutes < 60) {
        //% "%1 min before"
        return qtTrId("tasks-schedule-reminder-minutes").arg(minutes);
    }
    if (minutes < 24 * 60) {
        //% "%1 h before"
        return qtTrId("tasks-schedule-reminder-hours").arg(minutes / 60);
    }
    //% "1 day before"
    return qtTrId("tasks-schedule-reminder-day");
}

// The weekday of the month a day is: the last one when no later one exists in its month.
std::pair<int, int> ordinalOf(QDate day)
{
    if (day.day() + 7 > day.daysInMonth())
        return {-1, day.dayOfWeek()};
    return {(day.day() - 1) / 7 + 1, day.dayOfWeek()};
}

} // namespace

TaskScheduleEditor::TaskScheduleEditor(const TaskEntity& task, QDate today, QWidget* parent)
    : QFrame(parent, Qt::Popup)
    , m_task(task)
    //% "Due"
    , m_hasDue(new QCheckBox(qtTrId("tasks-schedule-due"), this))
    , m_day(new QDateEdit(this))
    //% "At"
    , m_hasTime(new QCheckBox(qtTrId("tasks-schedule-at-time"), this))
    , m_time(new QTimeEdit(this))
    , m_frequency(new QComboBox(this))
    , m_interval(new QSpinBox(this))
    , m_monthly(new QComboBox(this))
    //% "Count from when it is done"
    , m_fromCompletion(new QCheckBox(qtTrId("tasks-schedule-from-completion"), this))
    , m_end(new QComboBox(this))
    , m_endCount(new QSpinBox(this))
    , m_endDate(new QDateEdit(this))
    , m_reminder(new QComboBox(this))
    , m_reminderNote(new QLabel(this))
    //% "Skip this time"
    , m_skip(new QPushButton(qtTrId("tasks-schedule-skip"), this))
{
    setObjectName(QStringLiteral("taskScheduleEditor"));
    setFrameShape(QFrame::StyledPanel);
    setAttribute(Qt::WA_DeleteOnClose);

    const QDate due = task.dueDay().value_or(today);
    m_hasDue->setObjectName(QStringLiteral("scheduleHasDue"));
    m_hasDue->setChecked(task.tasDueDate.has_value());
    m_day->setObjectName(QStringLiteral("scheduleDay"));
    m_day->setCalendarPopup(true);
    m_day->setDate(due);
    m_hasTime->setObjectName(QStringLiteral("scheduleHasTime"));
    m_hasTime->setChecked(task.tasDueDate && task.tasDueHasTime);
    m_time->setObjectName(QStringLiteral("scheduleTime"));
    m_time->setTime(task.tasDueDate && task.tasDueHasTime ? task.tasDueDate->toLocalTime().time() : QTime(9, 0));

    m_frequency->setObjectName(QStringLiteral("scheduleFrequency"));
    //% "Does not repeat"
    m_frequency->addItem(qtTrId("tasks-schedule-repeat-never"));
    //% "Every N days"
    m_frequency->addItem(qtTrId("tasks-schedule-repeat-daily"));
    //% "Every N weeks"
    m_frequency->addItem(qtTrId("tasks-schedule-repeat-weekly"));
    //% "Every N months"
    m_frequency->addItem(qtTrId("tasks-schedule-repeat-monthly"));
    //% "Every N years"
    m_frequency->addItem(qtTrId("tasks-schedule-repeat-yearly"));
    m_interval->setObjectName(QStringLiteral("scheduleInterval"));
    m_interval->setRange(1, 999);
    //% "N ="
    m_interval->setPrefix(qtTrId("tasks-schedule-interval-prefix") + QLatin1Char(' '));

    auto* weekdays = new QHBoxLayout;
    for (int day = Qt::Monday; day <= Qt::Sunday; ++day) {
        auto* button = new QToolButton(this);
        button->setObjectName(QStringLiteral("scheduleWeekday%1").arg(day));
        button->setText(QLocale().dayName(day, QLocale::NarrowFormat));
        button->setToolTip(QLocale().dayName(day));
        button->setCheckable(true);
        m_weekdays.append(button);
        weekdays->addWidget(button);
    }

    m_monthly->setObjectName(QStringLiteral("scheduleMonthly"));
    //% "On the same day"
    m_monthly->addItem(qtTrId("tasks-schedule-monthly-same-day"));
    //% "On the last day"
    m_monthly->addItem(qtTrId("tasks-schedule-monthly-last-day"));
    //% "On the same weekday (e.g. last Friday)"
    m_monthly->addItem(qtTrId("tasks-schedule-monthly-same-weekday"));

    m_end->setObjectName(QStringLiteral("scheduleEnd"));
    //% "Forever"
    m_end->addItem(qtTrId("tasks-schedule-end-never"));
    //% "A number of times"
    m_end->addItem(qtTrId("tasks-schedule-end-count"));
    //% "Until a date"
    m_end->addItem(qtTrId("tasks-schedule-end-date"));
    m_endCount->setObjectName(QStringLiteral("scheduleEndCount"));
    m_endCount->setRange(1, 9999);
    m_endCount->setValue(10);
    m_endDate->setObjectName(QStringLiteral("scheduleEndDate"));
    m_endDate->setCalendarPopup(true);
    m_endDate->setDate(due.addMonths(3));

    if (const std::optional<TaskRecurrenceEntity>& repeat = task.tasRecurrence) {
        m_frequency->setCurrentIndex(int(repeat->frequency) + 1);
        m_interval->setValue(repeat->interval);
        for (const int day : repeat->weekdays)
            m_weekdays.at(day - 1)->setChecked(true);
        m_monthly->setCurrentIndex(
            repeat->weekdayOrdinal != 0 ? sameWeekday : (repeat->monthDay == -1 ? lastDay : sameDay));
        m_fromCompletion->setChecked(repeat->anchor == RecurrenceAnchorEnum::completion);
        m_end->setCurrentIndex(repeat->endAfterCount ? afterCount : (repeat->endOnDate ? onDate : never));
        if (repeat->endAfterCount)
            m_endCount->setValue(*repeat->endAfterCount);
        if (repeat->endOnDate)
            m_endDate->setDate(*repeat->endOnDate);
    }
    m_fromCompletion->setObjectName(QStringLiteral("scheduleFromCompletion"));

    m_reminder->setObjectName(QStringLiteral("scheduleReminder"));
    //% "No reminder"
    m_reminder->addItem(qtTrId("tasks-schedule-reminder-none"));
    for (const int minutes : reminderMinutes)
        m_reminder->addItem(reminderText(minutes), minutes);
    if (task.tasReminderMinutesBefore) {
        const int found = m_reminder->findData(*task.tasReminderMinutesBefore);
        if (found < 0)
            m_reminder->addItem(reminderText(*task.tasReminderMinutesBefore), *task.tasReminderMinutesBefore);
        m_reminder->setCurrentIndex(found < 0 ? m_reminder->count() - 1 : found);
    }

    m_reminderNote->setObjectName(QStringLiteral("scheduleReminderNote"));
    m_reminderNote->setWordWrap(true);
    //% "Without a time, the reminder counts from %1 that day."
    m_reminderNote->setText(qtTrId("tasks-schedule-reminder-day-only")
                                .arg(QLocale().toString(TaskReminderTime::dayOnlyDueTime, QLocale::ShortFormat)));

    m_skip->setObjectName(QStringLiteral("scheduleSkip"));
    m_skip->setVisible(task.tasRecurrence.has_value() && !task.tasIsDone);
    //% "Save"
    auto* save = new QPushButton(qtTrId("tasks-schedule-save"), this);
    save->setObjectName(QStringLiteral("scheduleSave"));
    save->setDefault(true);

    auto* form = new QFormLayout(this);
    auto* dueRow = new QHBoxLayout;
    dueRow->addWidget(m_day);
    dueRow->addWidget(m_hasTime);
    dueRow->addWidget(m_time);
    form->addRow(m_hasDue, dueRow);
    //% "Repeat"
    form->addRow(qtTrId("tasks-schedule-repeat"), m_frequency);
    form->addRow(QString(), m_interval);
    form->addRow(QString(), weekdays);
    form->addRow(QString(), m_monthly);
    form->addRow(QString(), m_fromCompletion);
    auto* endRow = new QHBoxLayout;
    endRow->addWidget(m_end);
    endRow->addWidget(m_endCount);
    endRow->addWidget(m_endDate);
    //% "Ends"
    form->addRow(qtTrId("tasks-schedule-ends"), endRow);
    //% "Remind me"
    form->addRow(qtTrId("tasks-schedule-reminder"), m_reminder);
    form->addRow(QString(), m_reminderNote);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_skip);
    buttons->addStretch();
    buttons->addWidget(save);
    form->addRow(buttons);

    for (QCheckBox* box : {m_hasDue, m_hasTime})
        connect(box, &QCheckBox::toggled, this, &TaskScheduleEditor::updateEnabled);
    for (QComboBox* box : {m_frequency, m_end, m_reminder})
        connect(box, &QComboBox::currentIndexChanged, this, &TaskScheduleEditor::updateEnabled);
    connect(save, &QPushButton::clicked, this, [this] {
        Q_EMIT saved(edited());
        close();
    });
    connect(m_skip, &QPushButton::clicked, this, [this] {
        Q_EMIT skipRequested(m_task);
        close();
    });
    updateEnabled();
}

void TaskScheduleEditor::updateEnabled()
{
    const bool dated = m_hasDue->isChecked();
    m_day->setEnabled(dated);
    m_hasTime->setEnabled(dated);
    m_time->setEnabled(dated && m_hasTime->isChecked());
    const int frequency = m_frequency->currentIndex();
    const bool repeats = dated && frequency > 0;
    m_frequency->setEnabled(dated);
    m_interval->setVisible(repeats);
    for (QToolButton* day : std::as_const(m_weekdays))
        day->setVisible(repeats && frequency == int(RecurrenceFrequencyEnum::weekly) + 1);
    m_monthly->setVisible(repeats && frequency >= int(RecurrenceFrequencyEnum::monthly) + 1);
    m_fromCompletion->setVisible(repeats);
    m_end->setEnabled(repeats);
    m_endCount->setVisible(repeats && m_end->currentIndex() == afterCount);
    m_endDate->setVisible(repeats && m_end->currentIndex() == onDate);
    m_reminder->setEnabled(dated);
    m_reminderNote->setVisible(dated && !m_hasTime->isChecked() && m_reminder->currentData().isValid());
}

std::optional<TaskRecurrenceEntity> TaskScheduleEditor::rule() const
{
    const int frequency = m_frequency->currentIndex();
    if (!m_hasDue->isChecked() || frequency <= 0)
        return std::nullopt;
    TaskRecurrenceEntity repeat;
    repeat.frequency = RecurrenceFrequencyEnum(frequency - 1);
    repeat.interval = m_interval->value();
    if (repeat.frequency == RecurrenceFrequencyEnum::weekly) {
        for (int day = Qt::Monday; day <= Qt::Sunday; ++day) {
            if (m_weekdays.at(day - 1)->isChecked())
                repeat.weekdays.append(day);
        }
    }
    if (repeat.frequency == RecurrenceFrequencyEnum::monthly || repeat.frequency == RecurrenceFrequencyEnum::yearly) {
        const QDate day = m_day->date();
        switch (m_monthly->currentIndex()) {
        case lastDay:
            repeat.monthDay = -1;
            break;
        case sameWeekday:
            std::tie(repeat.weekdayOrdinal, repeat.ordinalWeekday) = ordinalOf(day);
            break;
        default:
            repeat.monthDay = day.day();
            break;
        }
    }
    repeat.anchor = m_fromCompletion->isChecked() ? RecurrenceAnchorEnum::completion : RecurrenceAnchorEnum::dueDate;
    if (m_end->currentIndex() == afterCount)
        repeat.endAfterCount = m_endCount->value();
    if (m_end->currentIndex() == onDate)
        repeat.endOnDate = m_endDate->date();
    return repeat;
}

TaskEntity TaskScheduleEditor::edited() const
{
    TaskEntity task = m_task;
    if (!m_hasDue->isChecked()) {
        task.tasDueDate.reset();
        task.tasDueHasTime = false;
        task.tasRecurrence.reset();
        task.tasReminderMinutesBefore.reset();
        return task;
    }
    task.tasDueHasTime = m_hasTime->isChecked();
    task.tasDueDate
        = task.tasDueHasTime ? QDateTime(m_day->date(), m_time->time()).toUTC() : TaskEntity::dueOnDay(m_day->date());
    task.tasRecurrence = rule();
    const QVariant reminder = m_reminder->currentData();
    task.tasReminderMinutesBefore = reminder.isValid() ? std::optional<int>(reminder.toInt()) : std::nullopt;
    return task;
}
