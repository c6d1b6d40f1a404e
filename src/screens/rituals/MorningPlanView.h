#pragma once

#include "screens/rituals/RitualDay.h"

#include <QDialog>

class AppServices;
class QLabel;
class QPushButton;
class QVBoxLayout;

// The morning plan: what is left over from earlier days, each with "Move to today" and one for
// all, then today's checklist, meets, the tasks due today or overdue, and the projects. Opened at the first start of a
// day and from the Day menu; closing it changes nothing.
class MorningPlanView final : public QDialog {
    Q_OBJECT

public:
    MorningPlanView(const AppServices& services, const QDate& today, QWidget* parent = nullptr);

    void reload();
    const RitualDay& day() const { return m_day; }
    bool isLoading() const { return m_isLoading; }
    QLabel* notice() const { return m_notice; }
    QLabel* dueTasks() const { return m_dueTasks; }
    QPushButton* moveAllButton() const { return m_moveAll; }

    // Moves the items to today, in their order, and says how many went.
    void moveToToday(const QList<DailyTaskEntity>& items);

Q_SIGNALS:
    // After every read of the day, for tests.
    void loaded();
    // After a move, with how many items went.
    void moved(int count);

private:
    void present(const RitualDay& day);
    void fillEarlier();
    void fillToday();

    const AppServices& m_services;
    RitualDay m_day;
    bool m_isLoading = false;
    quint64 m_generation = 0;
    QLabel* m_title;
    QVBoxLayout* m_earlier;
    QPushButton* m_moveAll;
    QLabel* m_checklist;
    QLabel* m_meets;
    QLabel* m_dueTasks;
    QLabel* m_projects;
    QLabel* m_notice;
};
