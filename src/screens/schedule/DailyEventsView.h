#pragma once

#include "app/MeetAlarmNavigationPayload.h"
#include "login/UserEntity.h"
#include "meetings/entities/MeetEntity.h"
#include "meetings/repositories/eventkit/EventKitStoring.h"
#include "platform/Clock.h"
#include "screens/schedule/CreateEventView.h"
#include "screens/schedule/MeetDetailView.h"

#include <QDate>
#include <QHash>
#include <QMessageBox>
#include <QPointer>
#include <QSet>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class AllDayEventsSectionView;
class QFrame;
class QLabel;
class QPushButton;
class QTimer;
class AppServices;
class CalendarWatching;
class DailyEventsController;
class DailyEventsDateNavigatorView;
class DailyEventsTimeRangeControlView;
class DailyScheduleTimelineView;
class MeetAlarmError;
class MiniCalendarView;
class ScheduleProjectsPaneView;
struct DailyEventsDay;

// The daily schedule: the chosen day's meets on an hour timeline with the all-day ones above,
// the day's alarms, and beside them the mini calendar, the daily checklist and the projects.
// Meets are read from the calendar store (and the backend for a Google account) off the GUI
// thread and reloaded after every change and on the application-wide notifications. The calendar
// store is watched around the shown day, so that what other programs change shows at once (the
// day's alarms following their meets), and so is every day up to the last armed alarm, whose
// alarms follow their events wherever they go. The days read since the last change are kept, and
// the shown day's neighbours read ahead, so going back or on by a day waits on nothing. A task
// dropped on the timeline (or its "Block time for this task") gets a meet of its own linked to
// it, whose card ticks the task.
class DailyEventsView final : public QWidget {
    Q_OBJECT

public:
    static inline const QString startHourKey = QStringLiteral("dailyEventsStartHour");
    static inline const QString endHourKey = QStringLiteral("dailyEventsEndHour");
    static constexpr int defaultStartHour = 5;
    static constexpr int defaultEndHour = 21;

    // Shared with the window: an opened alarm's meet, and a day to jump to. The view clears them
    // once it has acted on them.
    struct Bindings {
        std::optional<MeetAlarmNavigationPayload>* pendingMeetNavigation = nullptr;
        std::optional<QDateTime>* pendingDateSelection = nullptr;
    };

    DailyEventsView(const AppServices& services, Bindings bindings, QWidget* parent = nullptr,
        std::shared_ptr<const Clock> clock = nullptr, std::shared_ptr<EventKitStoring> eventStore = nullptr);
    ~DailyEventsView() override;

    QDate selectedDate() const { return m_selectedDate; }
    void setSelectedDate(const QDate& date);
    QDate minDate() const;
    QDate maxDate() const;
    int startHour() const { return m_startHour; }
    int endHour() const { return m_endHour; }
    const QList<MeetEntity>& events() const { return m_events; }
    const std::optional<MeetEntity>& meetOpenedFromAlarm() const { return m_meetOpenedFromAlarm; }
    const std::optional<QString>& deleteErrorMessage() const { return m_deleteErrorMessage; }
    // Why the last alarm asked for was not set.
    const std::optional<QString>& alarmErrorMessage() const { return m_alarmErrorMessage; }
    QMessageBox* alarmAlert() const { return m_alarmAlert; }
    bool isShowingPermissionDeniedAlert() const { return m_isShowingPermissionDeniedAlert; }
    bool isLoading() const { return m_isLoading; }

    DailyEventsDateNavigatorView* navigator() const { return m_navigator; }
    DailyEventsTimeRangeControlView* timeRangeControl() const { return m_timeRange; }
    DailyScheduleTimelineView* timeline() const { return m_timeline; }
    AllDayEventsSectionView* allDaySection() const { return m_allDay; }
    ScheduleProjectsPaneView* projectsPane() const { return m_projectsPane; }
    MeetDetailView* meetDetail() const { return m_detail; }
    CreateEventView* editor() const { return m_editor; }
    // Tells the screen what other programs change; set once the schedule has started.
    CalendarWatching* calendarWatcher() const { return m_watcher; }
    // Tells the screen what other programs change up to the last armed alarm, whatever day.
    CalendarWatching* alarmWatcher() const { return m_alarmWatcher; }
    // Whether the day is kept in memory, so that showing it again waits on nothing.
    bool isDayCached(const QDate& day) const;

    // Acts on what the window left in the bindings: the day to show and the meet to open.
    void consumePendingNavigation();

    // The editor for a new meet starting at start, or for meet.
    void createEvent(const QDateTime& start);
    void editMeet(const MeetEntity& meet);
    // Asks for confirmation, then deletes.
    void deleteMeet(const MeetEntity& meet);
    void showDetail(const MeetEntity& meet);
    // Saves the meet at another time or length, as the editor saves it; on failure the meet
    // stays where it was and an alert says why.
    // A move or resize saved shows a notice whose Undo puts the meet back.
    // allDay: whether the meet is all-day afterwards; unchanged when none.
    void moveMeet(const MeetEntity& meet, const QDateTime& start, const QDateTime& end, bool undoable = true,
        std::optional<bool> allDay = std::nullopt);
    // The short notice after a move or resize; hidden when there is none.
    QFrame* notice() const { return m_notice; }
    QLabel* noticeText() const { return m_noticeText; }
    QPushButton* undoButton() const { return m_undoButton; }
    // Why the last move or resize was not saved.
    const std::optional<QString>& moveErrorMessage() const { return m_moveErrorMessage; }
    QMessageBox* moveAlert() const { return m_moveAlert; }

    // A meet of half an hour from start, titled as the task and linked to it, in the default
    // calendar; the notice's Undo deletes it again. Without a start, the first free half hour
    // of the shown day (from now, on today) within the shown hours.
    void blockTime(const MeetTaskLink& link, const std::optional<QDateTime>& start = std::nullopt);
    // Marks the task of a meet that blocks time for one done or not done.
    void setTaskDone(const MeetEntity& meet, bool done);
    // Why the last time block or change of a task was not saved.
    const std::optional<QString>& taskErrorMessage() const { return m_taskErrorMessage; }
    // Whether the task of each linked meet shown is done, by meet.
    const QHash<QUuid, bool>& taskDone() const { return m_taskDone; }

Q_SIGNALS:
    // After every load of the day's meets, for tests and benchmarks.
    void loaded();

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void readStoredHourRange();
    void start();
    // Reads the selected day; the alarms of the meets shown and an open editor follow what
    // changed since the last read.
    void loadDay();
    // The shown day read again and every other day forgotten, after something changed them.
    void refresh();
    void apply(const DailyEventsDay& day);
    // The days of the watched span around day read into the cache in the background, at once, so
    // that any of them shows without waiting on the store; the watch keeps them current.
    void prefetchAround(const QDate& day);
    void prefetch();
    void watchCalendars(const DailyEventsDay& day, const std::optional<QDateTime>& lastArmed);
    // Every armed alarm checked against the store, off the GUI thread, one pass at a time.
    void followArmedAlarms();
    void setHourRange(int startHour, int endHour);
    void setAlarm(const MeetEntity& meet, bool armed);
    void setDayAlarms(bool armed);
    void showAlarmRefusal(const QString& consolePrefix, const MeetAlarmError& refusal);
    void openPendingMeet();
    void openEditor(CreateEventView* editor);
    void showNotice(const QString& text, std::function<void()> undo);
    // The notice's Undo for a change the history holds as step: the history's undo while that
    // step is still the last one; otherwise (a meet of the backend, which it does not hold).
    std::function<void()> undoOf(const QString& step, std::function<void()> otherwise);
    void showTaskFailure(const QString& message);
    // The tasks of the shown day's linked meets read again, after the tasks changed.
    void followTaskStates();

    const AppServices& m_services;
    Bindings m_bindings;
    std::shared_ptr<const Clock> m_clock;
    std::shared_ptr<EventKitStoring> m_eventStore;
    std::shared_ptr<const DailyEventsController> m_controller;
    std::optional<UserEntity> m_user;
    QDate m_selectedDate;
    // The day whose meets are on screen.
    QDate m_shownDate;
    QList<MeetEntity> m_events;
    // The days read since the watched calendars last changed, all within the watched span.
    QHash<QDate, DailyEventsDay> m_cache;
    // Counts the times the cache was emptied: a read begun before then is stale.
    quint64 m_cacheEpoch = 0;
    // The generation of the read of the selected day under way, 0 when none; and whether the
    // store changed while it ran, so that the day is read again once it is shown.
    quint64 m_readingGeneration = 0;
    bool m_readAgain = false;
    QSet<QDate> m_prefetching;
    // Reading ahead waits a moment after a day shows: a burst of changes reads the shown day
    // again and again, and the reads ahead would only slow those.
    QTimer* m_prefetchTimer;
    QDate m_prefetchAround;
    CalendarWatching* m_watcher = nullptr;
    CalendarWatching* m_alarmWatcher = nullptr;
    bool m_isFollowingAlarms = false;
    bool m_followAlarmsAgain = false;
    // The meet open in the editor, to tell when another program deletes it.
    std::optional<MeetEntity> m_editedMeet;
    QList<CalendarStoreCalendar> m_calendars;
    QString m_defaultCalendarIdentifier;
    QSet<QUuid> m_armedMeetIds;
    bool m_isShowingPermissionDeniedAlert = false;
    std::optional<MeetEntity> m_meetOpenedFromAlarm;
    // The alarm's meet, waiting for its day's meets to arrive.
    std::optional<MeetAlarmNavigationPayload> m_meetAwaited;
    std::optional<MeetEntity> m_meetPendingDeletion;
    std::optional<QString> m_deleteErrorMessage;
    std::optional<QString> m_alarmErrorMessage;
    std::optional<QString> m_moveErrorMessage;
    std::optional<QString> m_taskErrorMessage;
    QHash<QUuid, bool> m_taskDone;
    QPointer<QMessageBox> m_moveAlert;
    std::function<void()> m_undo;
    int m_startHour = defaultStartHour;
    int m_endHour = defaultEndHour;
    bool m_started = false;
    bool m_isLoading = false;
    quint64 m_generation = 0;

    DailyEventsDateNavigatorView* m_navigator;
    DailyEventsTimeRangeControlView* m_timeRange;
    AllDayEventsSectionView* m_allDay;
    DailyScheduleTimelineView* m_timeline;
    QFrame* m_notice;
    QLabel* m_noticeText;
    QPushButton* m_undoButton;
    QTimer* m_noticeTimer;
    MiniCalendarView* m_miniCalendar;
    ScheduleProjectsPaneView* m_projectsPane;
    QPointer<MeetDetailView> m_detail;
    QPointer<CreateEventView> m_editor;
    QPointer<QMessageBox> m_alarmAlert;
};
