#pragma once

#include "platform/Clock.h"
#include "screens/bitacora/BitacoraController.h"
#include "screens/bitacora/BitacoraScheduler.h"
#include "screens/schedule/MiniCalendarHolidaySource.h"

#include <QDateTime>
#include <QSet>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class AppServices;
class BitacoraProjectRowView;
class MiniCalendarView;
class QFrame;
class QLabel;
class QScrollArea;
class QStackedWidget;
class QToolButton;
class QVBoxLayout;

// The logbook: for one day, every project of the user with the text written about it that day.
// Rows save themselves as the user types; nothing typed is lost when the day changes, the
// workspace is left or the window closes, because each of those first saves what is waiting.
class BitacoraView final : public QWidget {
    Q_OBJECT

public:
    // Where time and holidays come from; tests hand in their own.
    struct Environment {
        std::shared_ptr<const Clock> clock;
        std::shared_ptr<BitacoraScheduler> scheduler;
        // Asked the first time the day picker opens.
        std::function<std::shared_ptr<const MiniCalendarHolidaySource>()> holidays;
    };

    static constexpr int titleFontSize = 22;

    explicit BitacoraView(const AppServices& services, QWidget* parent = nullptr);
    BitacoraView(const AppServices& services, Environment environment, QWidget* parent = nullptr);
    ~BitacoraView() override;

    const QDateTime& selectedDate() const { return m_selectedDate; }
    void setSelectedDate(const QDateTime& date);
    // Shows the day of date with the project's row in view and focused, once the day is loaded.
    void reveal(const QDateTime& date, const QUuid& projectId);
    // The project whose row was last brought into view that way.
    QUuid revealedProjectId() const { return m_revealedProjectId; }
    bool isLoading() const { return m_isLoading; }
    bool isLoggedIn() const { return m_isLoggedIn; }
    const QList<ProjectEntity>& projects() const { return m_projects; }
    const QHash<QUuid, BitacoraEntryEntity>& entries() const { return m_entries; }
    const std::optional<QString>& errorMessage() const { return m_errorMessage; }
    const std::optional<ProjectEntity>& entryPendingDeletion() const { return m_entryPendingDeletion; }

Q_SIGNALS:
    // After every load of the day, for tests.
    void loaded();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildHeader(QVBoxLayout* layout);
    void buildConfirmation();
    void start();
    void loadDay();
    // Saves what the rows wait to save, then runs next once no save is running any more, so
    // that what is loaded next includes all of it. When a save failed, next never runs.
    void whenRowsSettled(std::function<void()> next);
    void rowSettled();
    void stayOn(const QDateTime& shownDate, const QString& unsavedProject);
    void rebuildRows();
    BitacoraProjectRowView* makeRow(const ProjectEntity& project);
    BitacoraProjectRowView* rowFor(const QUuid& projectId) const;
    QList<BitacoraProjectRowView*> rows() const;
    void saveEntry(const ProjectEntity& project, const QDateTime& date, const QString& text,
        std::function<void(std::optional<QString>)> done);
    void requestDeletion(const ProjectEntity& project);
    void confirmDeletion();
    void cancelDeletion();
    void setErrorMessage(std::optional<QString> message);
    void showDayPicker();
    void render();
    void revealPendingRow();

    const AppServices& m_services;
    Environment m_environment;
    std::unique_ptr<BitacoraController> m_controller;

    QDateTime m_selectedDate;
    QList<ProjectEntity> m_projects;
    QHash<QUuid, BitacoraEntryEntity> m_entries;
    QHash<QUuid, int> m_deletionTick;
    bool m_isLoading = false;
    bool m_isLoggedIn = false;
    QUuid m_userId;
    std::optional<ProjectEntity> m_entryPendingDeletion;
    QSet<QUuid> m_deletingProjectIds;
    std::optional<QString> m_errorMessage;

    bool m_started = false;
    // Until the first answer about the user, the day's page stands (empty) rather than the sign-in hint.
    bool m_knowsUser = false;
    quint64 m_generation = 0;
    std::function<void()> m_afterRowsSettled;
    // The error line says that a failed save keeps the day on screen.
    bool m_keepsDayForUnsavedText = false;
    std::optional<std::pair<QDate, QUuid>> m_revealing;
    QUuid m_revealedProjectId;

    QStackedWidget* m_pages;
    QWidget* m_header;
    QLabel* m_dateTitle;
    QLabel* m_errorLabel;
    QLabel* m_emptyState;
    QScrollArea* m_scroll;
    QWidget* m_rowsContainer;
    QVBoxLayout* m_rowsLayout;
    QFrame* m_confirmation;
    QLabel* m_confirmationDetail;
    QToolButton* m_dayPickerButton;
    QFrame* m_dayPicker = nullptr;
    MiniCalendarView* m_miniCalendar = nullptr;
};
