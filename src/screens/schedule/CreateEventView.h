#pragma once

#include "meetings/entities/MeetDraft.h"
#include "meetings/entities/MeetEntity.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/schedule/RepeatOption.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <utility>

class QCheckBox;
class QComboBox;
class QDateTimeEdit;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QToolButton;

// The sheet in which a meet is created or edited. Save hands the fields to onSave, which answers
// later with no message (saved: the sheet closes) or the message to show (the sheet stays).
class CreateEventView final : public QDialog {
    Q_OBJECT

public:
    using Done = std::function<void(const std::optional<QString>& errorMessage)>;
    using OnSave = std::function<void(const MeetDraft& draft, Done done)>;

    // Creating: from start, an hour long, no repetition.
    CreateEventView(const QDateTime& start, OnSave onSave, QWidget* parent = nullptr);
    // Editing: the meet's own fields.
    CreateEventView(const MeetEntity& meet, OnSave onSave, QWidget* parent = nullptr);

    bool isEditing() const { return m_isEditing; }
    bool isSaving() const { return m_isSaving; }
    const std::optional<QString>& errorMessage() const { return m_errorMessage; }
    MeetDraft draft() const;
    // What the summary line says now; empty when it is hidden.
    QString repetitionSummary() const;
    // The calendars a new meet may go into, with the one to preselect. An edited meet stays in
    // its own calendar, so the choice is shown but fixed.
    void setCalendars(const QList<CalendarStoreCalendar>& calendars, const QString& preselected);

    QLineEdit* titleField() const { return m_title; }
    QDateTimeEdit* startField() const { return m_start; }
    QDateTimeEdit* endField() const { return m_end; }
    QComboBox* repeatField() const { return m_repeat; }
    QCheckBox* allDayField() const { return m_allDay; }
    QComboBox* calendarField() const { return m_calendar; }
    QLineEdit* locationField() const { return m_location; }
    QLineEdit* linkField() const { return m_link; }
    QToolButton* weekdayToggle(int weekday) const;
    QPushButton* saveButton() const { return m_save; }
    QPushButton* cancelButton() const { return m_cancel; }
    // Says that a change made from one occurrence of a repeating event changes them all.
    QLabel* wholeSeriesNote() const { return m_wholeSeriesNote; }

    void save();
    // The edited meet was deleted by another program: says so, keeping what was typed.
    void showDeletedElsewhere();

private:
    CreateEventView(bool isEditing, OnSave onSave, QWidget* parent);
    void fill(const MeetEntity& meet);
    void showAllDay(bool allDay);
    // Offers only the fields the chosen calendar keeps.
    void fitToCalendar(const QString& calendarIdentifier);
    void refresh();
    std::optional<QString> validationError() const;

    bool m_isEditing;
    OnSave m_onSave;
    bool m_isSaving = false;
    std::optional<QString> m_errorMessage;
    QLineEdit* m_title;
    QCheckBox* m_allDay;
    QDateTimeEdit* m_start;
    QDateTimeEdit* m_end;
    QLabel* m_duration;
    QComboBox* m_calendar;
    QLineEdit* m_location;
    QLineEdit* m_link;
    QPlainTextEdit* m_description;
    QComboBox* m_repeat;
    QWidget* m_weekdays;
    QLabel* m_weekdayHint;
    QLabel* m_summary;
    QLabel* m_error;
    QLabel* m_wholeSeriesNote;
    QPushButton* m_save;
    QPushButton* m_cancel;
    QList<QToolButton*> m_weekdayToggles;
    // The start and end times while the meet is shown as all-day.
    std::optional<std::pair<QTime, QTime>> m_timedHours;
};
