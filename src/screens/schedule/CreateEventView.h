#pragma once

#include "meetings/entities/MeetDraft.h"
#include "meetings/entities/MeetEntity.h"
#include "screens/schedule/RepeatOption.h"

#include <QDialog>

#include <functional>
#include <optional>

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

    QLineEdit* titleField() const { return m_title; }
    QDateTimeEdit* startField() const { return m_start; }
    QDateTimeEdit* endField() const { return m_end; }
    QComboBox* repeatField() const { return m_repeat; }
    QToolButton* weekdayToggle(int weekday) const;
    QPushButton* saveButton() const { return m_save; }

    void save();

private:
    CreateEventView(bool isEditing, OnSave onSave, QWidget* parent);
    void fill(const QString& title, const QString& description, const QDateTime& start, const QDateTime& end,
        RepeatOption repeat, const QSet<int>& weekdays);
    void refresh();
    std::optional<QString> validationError() const;

    bool m_isEditing;
    OnSave m_onSave;
    bool m_isSaving = false;
    std::optional<QString> m_errorMessage;
    QLineEdit* m_title;
    QDateTimeEdit* m_start;
    QDateTimeEdit* m_end;
    QLabel* m_duration;
    QPlainTextEdit* m_description;
    QComboBox* m_repeat;
    QWidget* m_weekdays;
    QLabel* m_weekdayHint;
    QLabel* m_summary;
    QLabel* m_error;
    QPushButton* m_save;
    QList<QToolButton*> m_weekdayToggles;
};
