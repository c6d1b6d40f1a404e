#pragma once

#include "meetings/entities/MeetTaskLink.h"
#include "screens/schedule/ScheduleProjectSectionView.h"
#include "tasks/TasksApplicationFactory.h"
#include "tasks/entities/DailyTaskEntity.h"

#include <QDate>
#include <QSet>
#include <QWidget>

#include <memory>
#include <optional>

class AppServices;
class DailyTaskController;
class DailyTaskSectionView;
class MiniCalendarHolidaySource;
class QLabel;
class QVBoxLayout;
class TasksController;

// The task side of the schedule for the chosen day: the daily checklist, then each project with
// its default list. On a working day every project starts unfolded; on a weekend or a holiday
// only those meant for every day do. Folding chosen by the user holds until the day changes.
// What other screens changed is read again when the schedule shows or its window is activated.
class ScheduleProjectsPaneView final : public QWidget {
    Q_OBJECT

public:
    ScheduleProjectsPaneView(const AppServices& services, std::shared_ptr<const MiniCalendarHolidaySource> holidays,
        QWidget* parent = nullptr);
    ~ScheduleProjectsPaneView() override;

    void setSelectedDate(const QDate& date);
    QDate selectedDate() const { return m_selectedDate; }
    // Reads the user again and rebuilds the applications (after a change of account).
    void start();
    void reload();

    bool isLoading() const { return m_isLoading; }
    bool isLoggedIn() const { return m_isLoggedIn; }
    bool isHolidaySelectedDate() const { return m_isHolidaySelectedDate; }
    const QSet<QUuid>& expandedProjectIds() const { return m_expandedProjectIds; }
    const QList<ProjectWithDefaultListEntity>& workspace() const { return m_workspace; }
    DailyTaskSectionView* dailyTaskSection() const { return m_dailySection; }
    QList<ScheduleProjectSectionView*> projectSections() const;

    // Whether the day starts with every project unfolded.
    static bool isWorkingDay(const QDate& date, bool isHoliday);

Q_SIGNALS:
    // After every load, for tests and benchmarks.
    void loaded();
    // A task's "Block time for this task": the schedule finds it a time.
    void blockTimeRequested(const MeetTaskLink& link);

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void render();
    ScheduleProjectSectionView* makeSection(const ProjectWithDefaultListEntity& item, bool expanded);
    void showFailure(const QString& message);
    void deleteCompleted(const TaskListEntity& list, const QList<TaskEntity>& completed);

    const AppServices& m_services;
    std::shared_ptr<const MiniCalendarHolidaySource> m_holidays;
    QDate m_selectedDate;
    std::optional<TasksApplicationFactory::Applications> m_applications;
    std::unique_ptr<DailyTaskController> m_dailyTasksController;
    std::unique_ptr<TasksController> m_tasksController;
    QList<ProjectWithDefaultListEntity> m_workspace;
    bool m_isLoading = false;
    QSet<QUuid> m_expandedProjectIds;
    QSet<QUuid> m_foldedProjectIds;
    // The day the folding was worked out for.
    QDate m_expandedFor;
    QList<DailyTaskEntity> m_dailyTasks;
    bool m_isHolidaySelectedDate = false;
    bool m_isDeletingCompletedTasks = false;
    QUuid m_userId;
    bool m_isLoggedIn = false;
    bool m_started = false;
    quint64 m_generation = 0;

    DailyTaskSectionView* m_dailySection;
    QLabel* m_projectsTitle;
    QVBoxLayout* m_projects;
};
