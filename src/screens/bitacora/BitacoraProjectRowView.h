#pragma once

#include "screens/bitacora/BitacoraScheduler.h"
#include "tasks/entities/ProjectEntity.h"

#include <QDateTime>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QLabel;
class QTextEdit;
class QToolButton;

// One project's log of the selected day: its name, an editor that saves itself one second
// after the last change, the saved or failed mark, and the delete button once something is
// stored. At most one save runs at a time; whatever changes meanwhile goes into exactly one
// more save after it. A failed save keeps the text in the editor and tries again by itself, sooner
// each time the user types and later each time it fails again.
class BitacoraProjectRowView final : public QWidget {
    Q_OBJECT

public:
    // Stores the text; done gets nothing on success, the message to show on failure.
    using SaveAction = std::function<void(const QString& text, std::function<void(std::optional<QString>)> done)>;

    static constexpr std::chrono::milliseconds autosaveDelay {1000};
    static constexpr std::chrono::milliseconds saveSuccessDuration {1500};
    // After a failed save the next try waits this long, doubled after each further failure.
    static constexpr std::chrono::milliseconds firstRetryDelay {5000};
    static constexpr std::chrono::milliseconds longestRetryDelay {60000};

    BitacoraProjectRowView(ProjectEntity project, QDateTime date, const QString& initialContent, bool hasSavedEntry,
        SaveAction onSave, std::function<void()> onDeleteRequested, std::shared_ptr<BitacoraScheduler> scheduler,
        QWidget* parent = nullptr);

    // "14:\n\n• " for the 14th: what an empty editor offers when it is entered.
    static QString entryTemplate(const QDate& day);
    // Nothing but the day's "<day>:" start and at most the bullet, as the template leaves it.
    static bool isTemplateOnly(const QString& text, const QDate& day);

    const ProjectEntity& project() const { return m_project; }
    const QDateTime& date() const { return m_date; }
    QString text() const { return m_text; }
    bool hasSavedEntry() const { return m_hasSavedEntry; }
    bool isSaving() const { return m_isSaving; }
    bool saveSuccess() const { return m_saveSuccess; }
    const std::optional<QString>& saveErrorMessage() const { return m_saveErrorMessage; }
    // Text that no save has taken yet: an autosave waiting for its second, a retry after a failed
    // save, or changes made while a save ran.
    bool hasUnsavedChanges() const { return m_autosaveTask.has_value() || m_pendingResave; }
    // The last save failed and the text still waits for a retry.
    bool hasFailedSave() const { return m_failedSaves > 0 && hasUnsavedChanges(); }
    // A save runs or another is due after it.
    bool isBusy() const { return m_isSaving || m_pendingResave; }

    void setDeleting(bool isDeleting);
    // Puts text in the editor as if typed: saved like any change. Text added at the end leaves
    // the cursor where the user has it.
    void showText(const QString& text);
    // Saves a waiting autosave, or retries a failed save, now instead of when it is due.
    void flush();
    // The user asked to delete the entry: what was typed since is not wanted any more.
    void discardUnsavedChanges();

Q_SIGNALS:
    // A save of text went to the store.
    void saveStarted(const QString& text);
    // No save runs any more: the last one was stored, or it failed and a retry is due later.
    void settled();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void textDidChange();
    void cancelAutosave();
    void save();
    void saveAnswered(const std::optional<QString>& errorMessage);
    void scheduleRetry();
    void setSaveSuccess(bool success);
    void render();

    const ProjectEntity m_project;
    const QDateTime m_date;
    bool m_hasSavedEntry;
    bool m_isDeleting = false;
    SaveAction m_onSave;
    std::function<void()> m_onDeleteRequested;
    std::shared_ptr<BitacoraScheduler> m_scheduler;

    QString m_text;
    bool m_isFocused = false;
    bool m_isSaving = false;
    bool m_saveSuccess = false;
    std::optional<QString> m_saveErrorMessage;
    std::optional<BitacoraScheduler::Handle> m_autosaveTask;
    std::optional<BitacoraScheduler::Handle> m_saveSuccessTask;
    bool m_pendingResave = false;
    int m_failedSaves = 0;

    QTextEdit* m_editor;
    QToolButton* m_deleteButton;
    QLabel* m_statusIcon;
    QLabel* m_statusText;
};
