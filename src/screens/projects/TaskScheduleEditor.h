#pragma once

#include "tasks/entities/TaskEntity.h"

#include <QFrame>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QPushButton;
class QSpinBox;
class QTimeEdit;
class QToolButton;

// The popover that edits when a task is due: its day, an optional time, how it repeats and a
// reminder. It opens from a task row and says what was chosen through saved or skipRequested.
class TaskScheduleEditor final : public QFrame {
    Q_OBJECT

public:
    // today: the day a new due date starts on.
    TaskScheduleEditor(const TaskEntity& task, QDate today, QWidget* parent = nullptr);

    // The task with the schedule as the fields now say.
    TaskEntity edited() const;

Q_SIGNALS:
    void saved(const TaskEntity& task);
    void skipRequested(const TaskEntity& task);

private:
    void updateEnabled();
    std::optional<TaskRecurrenceEntity> rule() const;

    TaskEntity m_task;
    QCheckBox* m_hasDue;
    QDateEdit* m_day;
    QCheckBox* m_hasTime;
    QTimeEdit* m_time;
    QComboBox* m_frequency;
    QSpinBox* m_interval;
    QList<QToolButton*> m_weekdays;
    QComboBox* m_monthly;
    QCheckBox* m_fromCompletion;
    QComboBox* m_end;
    QSpinBox* m_endCount;
    QDateEdit* m_endDate;
    QComboBox* m_reminder;
    // When a reminder rings for a day without a time.
    QLabel* m_reminderNote;
    QPushButton* m_skip;
};
