#pragma once

#include "platform/Clock.h"

#include <QDate>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

class AppServices;
class DayReviewView;
class MainWindow;
class MorningPlanView;
class QMenu;

// The day's rituals around the window: at the first start of a day the unfinished daily tasks of
// earlier days move to today (when the user chose so) and the morning plan opens; at the chosen
// hours a notification offers the plan and the review; the Day menu opens both; a quick-add from
// outside lands in a project. Nothing polls: each reminder is one timer set for its moment.
class DayRituals final : public QObject {
    Q_OBJECT

public:
    DayRituals(const AppServices& services, MainWindow* window, std::shared_ptr<const Clock> clock = nullptr,
        QObject* parent = nullptr);
    ~DayRituals() override;

    // Called once the window is up (or, in the background, hidden). Records today as started.
    void atStart(bool background);
    // Adds a task titled text and says where it went.
    void quickAdd(const QString& text);

    void openPlan();
    void openReview();
    MorningPlanView* plan() const;
    DayReviewView* review() const;
    // Whether this run began on a day Tolvane had not started on before.
    bool wasFirstStartOfDay() const { return m_firstStartOfDay; }
    // The last notice shown: in the window's status bar, and as a desktop notification while
    // the window is hidden.
    const QString& lastNotice() const { return m_lastNotice; }

    // Milliseconds from now until the next hour:00 strictly after now, in local time.
    static qint64 msUntilNextHour(const QDateTime& now, int hour);

Q_SIGNALS:
    // After an automatic move at the start of a day, with how many items went.
    void rolledOver(int count);
    void quickAddFinished(bool added);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void onReminderAction(uint notificationId, const QString& actionKey);

private:
    void addMenu();
    void watchFirstAlarm();
    void moveUnfinishedToToday();
    void armReminders();
    void armReminder(QTimer& timer, const QString& hourKey);
    void remind(const QString& title, const QString& body, const QString& action);
    void showNotice(const QString& text);
    QDate today() const;

    const AppServices& m_services;
    QPointer<MainWindow> m_window;
    std::shared_ptr<const Clock> m_clock;
    // Its entries call this object: they go with it.
    QPointer<QMenu> m_menu;
    QPointer<MorningPlanView> m_plan;
    QPointer<DayReviewView> m_review;
    QTimer m_planReminder;
    QTimer m_reviewReminder;
    // A run that spans midnight starts a new day too.
    QTimer m_newDay;
    bool m_firstStartOfDay = false;
    bool m_background = false;
    bool m_planWhenShown = false;
    QString m_lastNotice;
    QHash<uint, QString> m_shownReminders;
};
