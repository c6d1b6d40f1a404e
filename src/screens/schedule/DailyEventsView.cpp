#include "screens/schedule/DailyEventsView.h"

#include "meetings/domain/MeetAlarmError.h"
#include "meetings/domain/MeetingsError.h"
#include "platform/NotificationCenter.h"
#include "platform/SystemClock.h"
#include "platform/calendar_store/CalendarStore.h"
#include "platform/calendar_store/CalendarWatcher.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"
#include "screens/common/Icons.h"
#include "screens/schedule/AllDayEventsSectionView.h"
#include "screens/schedule/CreateEventView.h"
#include "screens/schedule/DailyEventsController.h"
#include "screens/schedule/DailyEventsDateNavigatorView.h"
#include "screens/schedule/DailyScheduleTimelineView.h"
#include "screens/schedule/MeetDetailView.h"
#include "screens/schedule/MiniCalendarHolidaySource.h"
#include "screens/schedule/MiniCalendarView.h"
#include "screens/schedule/ScheduleProjectsPaneView.h"
#include "undo/UndoHistory.h"

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

#include <variant>

namespace {

struct LoadedDay {
    DailyEventsDay day;
    std::optional<QDateTime> lastArmed;
    std::optional<QString> failure;
    bool editedMeetGone = false;
};

QString messageOf(const std::exception& error)
{
    if (const auto* meetings = dynamic_cast<const MeetingsError*>(&error))
        return meetings->localizedDescription();
    return QString::fromUtf8(error.what());
}

} // namespace

DailyEventsView::DailyEventsView(const AppServices& services, Bindings bindings, QWidget* parent,
    std::shared_ptr<const Clock> clock, std::shared_ptr<EventKitStoring> eventStore)
    : QWidget(parent)
    , m_services(services)
    , m_bindings(bindings)
    , m_clock(clock ? std::move(clock) : std::make_shared<SystemClock>())
    , m_eventStore(std::move(eventStore))
    , m_selectedDate(m_clock->now().toLocalTime().date())
    , m_navigator(new DailyEventsDateNavigatorView(this))
    , m_timeRange(new DailyEventsTimeRangeControlView(this))
    , m_allDay(new AllDayEventsSectionView(this))
    , m_timeline(new DailyScheduleTimelineView(m_clock, QTimeZone::systemTimeZone(), this))
    , m_notice(new QFrame(this))
    , m_noticeText(new QLabel(m_notice))
    , m_undoButton(new QPushButton(m_notice))
    , m_noticeTimer(new QTimer(this))
    , m_prefetchTimer(new QTimer(this))
{
    setObjectName(QStringLiteral("dailyEventsView"));
    const std::shared_ptr<const MiniCalendarHolidaySource> holidays
        = MiniCalendarHolidaySource::live(services.notificationCenter());
    m_miniCalendar = new MiniCalendarView(holidays, m_clock, this);
    m_projectsPane = new ScheduleProjectsPaneView(services, holidays, this);

    readStoredHourRange();
    m_navigator->setBounds(minDate(), maxDate());
    m_navigator->setSelectedDate(m_selectedDate);
    m_miniCalendar->setSelectedDate(m_selectedDate);
    m_projectsPane->setSelectedDate(m_selectedDate);

    auto* dayContent = new QWidget;
    auto* dayLayout = new QVBoxLayout(dayContent);
    dayLayout->addWidget(m_allDay);
    m_timeline->setAllDayRow(m_allDay);
    dayLayout->addSpacing(6);
    dayLayout->addWidget(m_timeline);
    dayLayout->addStretch();
    auto* dayScroll = new QScrollArea(this);
    dayScroll->setObjectName(QStringLiteral("dailyEventsScroll"));
    dayScroll->setWidgetResizable(true);
    dayScroll->setFrameShape(QFrame::NoFrame);
    dayScroll->setWidget(dayContent);

    m_notice->setObjectName(QStringLiteral("scheduleNotice"));
    m_notice->setFrameShape(QFrame::StyledPanel);
    auto* noticeLayout = new QHBoxLayout(m_notice);
    noticeLayout->setContentsMargins(8, 2, 4, 2);
    noticeLayout->addWidget(m_noticeText, 1);
    noticeLayout->addWidget(m_undoButton);
    m_undoButton->setObjectName(QStringLiteral("scheduleUndoButton"));
    //% "Undo"
    m_undoButton->setText(qtTrId("schedule-undo-button"));
    m_notice->hide();
    // Long enough to read and reach for the button; the notice is no record.
    m_noticeTimer->setSingleShot(true);
    m_noticeTimer->setInterval(8000);
    connect(m_noticeTimer, &QTimer::timeout, m_notice, &QWidget::hide);
    m_prefetchTimer->setSingleShot(true);
    m_prefetchTimer->setInterval(250);
    connect(m_prefetchTimer, &QTimer::timeout, this, &DailyEventsView::prefetch);
    connect(m_undoButton, &QPushButton::clicked, this, [this] {
        m_notice->hide();
        m_noticeTimer->stop();
        if (const std::function<void()> undo = std::exchange(m_undo, {}))
            undo();
    });

    auto* dayColumn = new QWidget(this);
    auto* dayColumnLayout = new QVBoxLayout(dayColumn);
    dayColumnLayout->addWidget(m_navigator);
    dayColumnLayout->addWidget(m_timeRange);
    dayColumnLayout->addWidget(m_notice);
    dayColumnLayout->addWidget(dayScroll, 1);

    auto* side = new QWidget(this);
    auto* sideLayout = new QVBoxLayout(side);
    sideLayout->addWidget(m_miniCalendar, 0, Qt::AlignHCenter);
    sideLayout->addWidget(m_projectsPane, 1);

    auto* splitter = new QSplitter(this);
    splitter->addWidget(dayColumn);
    splitter->addWidget(side);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);

    connect(m_navigator, &DailyEventsDateNavigatorView::selectedDateChanged, this, &DailyEventsView::setSelectedDate);
    connect(m_navigator, &DailyEventsDateNavigatorView::todayRequested, this,
        [this] { setSelectedDate(m_clock->now().toLocalTime().date()); });
    connect(m_navigator, &DailyEventsDateNavigatorView::dayAlarmToggled, this, &DailyEventsView::setDayAlarms);
    connect(m_miniCalendar, &MiniCalendarView::onSelectDate, this, &DailyEventsView::setSelectedDate);
    connect(m_timeRange, &DailyEventsTimeRangeControlView::rangeChanged, this, &DailyEventsView::setHourRange);
    connect(m_timeline, &DailyScheduleTimelineView::onCreateEvent, this, &DailyEventsView::createEvent);
    connect(m_timeline, &DailyScheduleTimelineView::onEditMeet, this, &DailyEventsView::editMeet);
    connect(m_timeline, &DailyScheduleTimelineView::onDeleteMeet, this, &DailyEventsView::deleteMeet);
    connect(m_timeline, &DailyScheduleTimelineView::detailRequested, this, &DailyEventsView::showDetail);
    connect(m_timeline, &DailyScheduleTimelineView::alarmToggled, this, &DailyEventsView::setAlarm);
    connect(m_timeline, &DailyScheduleTimelineView::changeRequested, this,
        [this](const MeetEntity& meet, const QDateTime& start, const QDateTime& end) { moveMeet(meet, start, end); });
    connect(m_timeline, &DailyScheduleTimelineView::taskDoneToggled, this, &DailyEventsView::setTaskDone);
    connect(m_timeline, &DailyScheduleTimelineView::taskDropped, this,
        [this](const MeetTaskLink& link, const QDateTime& start) { blockTime(link, start); });
    connect(m_timeline, &DailyScheduleTimelineView::allDayMeetDropped, this,
        [this](const QUuid& metId, const QDateTime& start) {
            for (const MeetEntity& meet : std::as_const(m_events)) {
                if (meet.metId == metId && meet.metIsAllDay) {
                    moveMeet(meet, start, start.addSecs(3600), true, false);
                    return;
                }
            }
        });
    connect(m_timeline, &DailyScheduleTimelineView::allDayRequested, this, [this](const MeetEntity& meet) {
        const QDate day = meet.metDate.toLocalTime().date();
        moveMeet(meet, QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(1), QTime(0, 0)), true, true);
    });
    connect(m_projectsPane, &ScheduleProjectsPaneView::blockTimeRequested, this,
        [this](const MeetTaskLink& link) { blockTime(link); });
    // The pane reads the tasks again whenever they may have changed: a ticked box follows.
    connect(m_projectsPane, &ScheduleProjectsPaneView::loaded, this, &DailyEventsView::followTaskStates);
    // So does a task ticked anywhere else in the program (quick add, search, the projects workspace).
    connect(&services.undoHistory(), &UndoHistory::recorded, this, &DailyEventsView::followTaskStates);
    // The backend's events are watched by nobody: a step of history may have put one back.
    connect(&services.undoHistory(), &UndoHistory::finished, this, [this](bool, const QString& message) {
        if (m_controller && message.isEmpty() && m_user && m_user->usrIsGoogleAccount)
            refresh();
    });
    connect(m_allDay, &AllDayEventsSectionView::onEditMeet, this, &DailyEventsView::editMeet);
    connect(m_allDay, &AllDayEventsSectionView::taskDoneToggled, this, &DailyEventsView::setTaskDone);
    connect(m_allDay, &AllDayEventsSectionView::onDeleteMeet, this, &DailyEventsView::deleteMeet);
    connect(m_allDay, &AllDayEventsSectionView::detailRequested, this, &DailyEventsView::showDetail);

    NotificationCenter& center = services.notificationCenter();
    for (const QString& name : {NotificationName::calendarAccountsDidChange, NotificationName::hiddenCalendarsDidChange,
             NotificationName::alarmScheduleDidChange}) {
        center.addObserver(name, this, [this](const QVariant&) {
            if (m_controller)
                refresh();
        });
    }
    center.addObserver(NotificationName::userAccountDidChange, this, [this](const QVariant&) {
        if (m_started)
            start();
    });
}

DailyEventsView::~DailyEventsView() = default;

QDate DailyEventsView::minDate() const
{
    return m_clock->now().toLocalTime().date().addMonths(-3);
}

QDate DailyEventsView::maxDate() const
{
    return m_clock->now().toLocalTime().date().addMonths(3);
}

// The settings window changes the same hours; the schedule picks them up whenever the user comes
// back to it.
void DailyEventsView::readStoredHourRange()
{
    const QVariant storedStart = m_services.userDefaults().value(startHourKey);
    const QVariant storedEnd = m_services.userDefaults().value(endHourKey);
    const int firstHour = storedStart.isValid() ? storedStart.toInt() : defaultStartHour;
    const int lastHour = storedEnd.isValid() ? storedEnd.toInt() : defaultEndHour;
    // A range that was damaged outside the program falls back to the default one.
    if (firstHour >= 0 && firstHour < lastHour && lastHour <= 23) {
        m_startHour = firstHour;
        m_endHour = lastHour;
    }
    m_timeRange->setRange(m_startHour, m_endHour);
    m_timeline->setHourRange(m_startHour, m_endHour);
}

void DailyEventsView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        readStoredHourRange();
}

void DailyEventsView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    readStoredHourRange();
    if (!m_started) {
        m_started = true;
        start();
    }
    consumePendingNavigation();
}

void DailyEventsView::start()
{
    const quint64 generation = ++m_generation;
    m_isLoading = true;
    const AppServices* services = &m_services;
    runAsync(
        this, [services] { return services->tasksSession(); },
        [this, generation](const AppServices::TasksSession& session) {
            if (generation != m_generation)
                return;
            m_user = session.user;
            // Built here: the calendar store must be reached first from the GUI thread.
            auto controller = std::make_shared<DailyEventsController>(m_services, m_user, m_eventStore);
            if (const auto* tasks = session.applications.dataAs<TasksApplicationFactory::Applications>())
                controller->setTasks(*tasks);
            m_controller = std::move(controller);
            if (!m_watcher) {
                m_watcher = new CalendarStoreWatcher(CalendarStore::shared(), this);
                connect(m_watcher, &CalendarWatching::eventsChanged, this, [this] {
                    refresh();
                    followArmedAlarms();
                });
                // Alarms ring on days the screen is far from: their events are watched too.
                m_alarmWatcher = new CalendarStoreWatcher(CalendarStore::shared(), this);
                connect(m_alarmWatcher, &CalendarWatching::eventsChanged, this, &DailyEventsView::followArmedAlarms);
                // The marks read a whole month of the holiday calendars: only a change of
                // calendars (one added, switched on or off) is worth that.
                connect(m_watcher, &CalendarWatching::calendarsChanged, this, [this] {
                    m_miniCalendar->reloadMarks();
                    refresh();
                });
            }
            refresh();
        });
}

void DailyEventsView::setSelectedDate(const QDate& date)
{
    const QDate bounded = std::clamp(date, minDate(), maxDate());
    if (bounded == m_selectedDate)
        return;
    m_selectedDate = bounded;
    m_navigator->setSelectedDate(bounded);
    m_miniCalendar->setSelectedDate(bounded);
    if (m_miniCalendar->displayedMonth().month() != bounded.month()
        || m_miniCalendar->displayedMonth().year() != bounded.year())
        m_miniCalendar->setDisplayedMonth(bounded);
    m_projectsPane->setSelectedDate(bounded);
    if (!m_controller)
        return;
    if (const auto cached = m_cache.constFind(bounded); cached != m_cache.cend()) {
        // Still as the store has it: the watcher would have said otherwise.
        ++m_generation;
        apply(*cached);
        prefetchAround(bounded);
        return;
    }
    loadDay();
}

bool DailyEventsView::isDayCached(const QDate& day) const
{
    return m_cache.contains(day);
}

void DailyEventsView::refresh()
{
    m_cache.clear();
    ++m_cacheEpoch;
    m_prefetchTimer->stop();
    // A read of the selected day under way is let finish and shown, then the day is read again:
    // dropping it for a new read would keep the screen waiting on every change of a burst (new
    // watches report in as they start, just as the first read of a new day runs).
    if (m_readingGeneration != 0 && m_readingGeneration == m_generation) {
        m_readAgain = true;
        return;
    }
    loadDay();
}

void DailyEventsView::prefetchAround(const QDate& day)
{
    m_prefetchAround = day;
    m_prefetchTimer->start();
}

void DailyEventsView::prefetch()
{
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    const QDate day = m_prefetchAround;
    if (!controller || !m_watcher || day != m_shownDate || m_isLoading || !m_prefetching.isEmpty())
        return;
    const CalendarWatchScope scope = m_watcher->scope();
    if (!scope.covers(day))
        return;
    const QDate first = std::max(scope.start.date(), minDate());
    const QDate last = std::min(scope.end.addSecs(-1).date(), maxDate());
    QSet<QDate> missing;
    for (QDate one = first; one <= last; one = one.addDays(1)) {
        if (!m_cache.contains(one))
            missing.insert(one);
    }
    if (missing.isEmpty())
        return;
    m_prefetching = missing;
    const quint64 epoch = m_cacheEpoch;
    runAsync(
        this,
        [controller, first, last]() -> std::optional<QList<DailyEventsDay>> {
            try {
                return controller->loadDays(first, last);
            } catch (const std::exception&) {
                // Read again when shown, where a failure is told.
                return std::nullopt;
            }
        },
        [this, epoch](const std::optional<QList<DailyEventsDay>>& read) {
            m_prefetching.clear();
            if (!read)
                return;
            // Something changed since the read began: it may not say what the store says.
            if (epoch != m_cacheEpoch) {
                prefetchAround(m_shownDate);
                return;
            }
            for (const DailyEventsDay& one : *read) {
                if (!one.isPermissionDenied && !m_cache.contains(one.date) && m_watcher->scope().covers(one.date))
                    m_cache.insert(one.date, one);
            }
        });
}

void DailyEventsView::loadDay()
{
    m_readAgain = false;
    const quint64 generation = ++m_generation;
    m_isLoading = true;
    m_readingGeneration = generation;
    const quint64 epoch = m_cacheEpoch;
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    const QDate date = m_selectedDate;
    // What the screen shows of the day: the alarms armed on it follow the changes, whoever made
    // them. Any read may be the first to see a change (the store's range index can lag behind
    // its notification), so every read of the shown day follows.
    const QList<MeetEntity> before = m_shownDate == date ? m_events : QList<MeetEntity>();
    // Any read may be the first after another program deleted the meet being edited.
    const std::optional<MeetEntity> edited = m_editor && m_editor->isEditing() ? m_editedMeet : std::nullopt;
    runAsync(
        this,
        [controller, date, before, edited] {
            LoadedDay loaded;
            loaded.day.date = date;
            try {
                loaded.day = controller->loadDay(date);
                if (!before.isEmpty())
                    controller->followAlarms(before, loaded.day);
                loaded.lastArmed = controller->lastArmedStart();
                loaded.editedMeetGone = edited && !controller->stillExists(*edited);
            } catch (const std::exception& error) {
                loaded.failure = messageOf(error);
            }
            return loaded;
        },
        [this, generation, epoch](const LoadedDay& loaded) {
            if (generation == m_readingGeneration)
                m_readingGeneration = 0;
            if (generation != m_generation) {
                // Left for another day before it came: still what the store says of its day, unless
                // something changed since it began.
                if (!loaded.failure && !loaded.day.isPermissionDenied && epoch == m_cacheEpoch && m_watcher
                    && m_watcher->scope().covers(loaded.day.date))
                    m_cache.insert(loaded.day.date, loaded.day);
                if (m_readingGeneration == 0 && std::exchange(m_readAgain, false) && m_controller)
                    refresh();
                return;
            }
            if (loaded.failure)
                m_services.console().appendLine(
                    QStringLiteral("DailyEventsController.loadDay failed: ") + *loaded.failure);
            else
                watchCalendars(loaded.day, loaded.lastArmed);
            apply(loaded.day);
            if (loaded.editedMeetGone && m_editor)
                m_editor->showDeletedElsewhere();
            if (std::exchange(m_readAgain, false))
                refresh();
        });
}

void DailyEventsView::watchCalendars(const DailyEventsDay& day, const std::optional<QDateTime>& lastArmed)
{
    if (!m_watcher || day.isPermissionDenied)
        return;
    m_alarmWatcher->watch(CalendarWatchScope::untilAlarms(
        m_clock->now().toLocalTime().date(), lastArmed, day.shownCalendarIdentifiers, m_alarmWatcher->scope()));
    const CalendarWatchScope scope
        = CalendarWatchScope::around(day.date, day.shownCalendarIdentifiers, m_watcher->scope());
    if (!(scope == m_watcher->scope())) {
        m_cache.clear();
        ++m_cacheEpoch;
        m_watcher->watch(scope);
    }
    m_cache.insert(day.date, day);
    prefetchAround(day.date);
}

void DailyEventsView::apply(const DailyEventsDay& day)
{
    m_isLoading = false;
    m_shownDate = day.date;
    m_events = day.meets;
    m_armedMeetIds = day.armedMeetIds;
    m_calendars = day.calendars;
    m_defaultCalendarIdentifier = day.defaultCalendarIdentifier;
    m_taskDone = day.taskDone;
    QList<MeetEntity> allDay;
    QList<MeetEntity> timed;
    for (const MeetEntity& meet : std::as_const(m_events))
        (meet.metIsAllDay ? allDay : timed).append(meet);
    m_allDay->setMeets(allDay, m_taskDone);
    m_timeline->setDay(day.date, timed, m_armedMeetIds, m_taskDone);
    m_navigator->setTogglingDayAlarms(false);
    m_navigator->setDayAlarm(day.isDayAlarmSet, !timed.isEmpty());
    if (m_detail)
        m_detail->finishTogglingAlarm(m_armedMeetIds.contains(m_detail->meet().metId));
    openPendingMeet();
    Q_EMIT loaded();
    if (day.isPermissionDenied && !m_isShowingPermissionDeniedAlert) {
        m_isShowingPermissionDeniedAlert = true;
        //% "No access to your calendars"
        auto* alert = new QMessageBox(QMessageBox::Warning, qtTrId("daily-events-permission-denied-title"),
            //% "Tolvane cannot read your calendars. Check that the desktop's calendar service is running."
            qtTrId("daily-events-permission-denied-message"), QMessageBox::Ok, this);
        alert->setObjectName(QStringLiteral("permissionDeniedAlert"));
        alert->setAttribute(Qt::WA_DeleteOnClose);
        connect(alert, &QMessageBox::finished, this, [this] { m_isShowingPermissionDeniedAlert = false; });
        alert->open();
    }
}

void DailyEventsView::consumePendingNavigation()
{
    if (m_bindings.pendingMeetNavigation && *m_bindings.pendingMeetNavigation) {
        m_meetAwaited = *m_bindings.pendingMeetNavigation;
        m_bindings.pendingMeetNavigation->reset();
    }
    std::optional<QDate> day;
    if (m_bindings.pendingDateSelection && *m_bindings.pendingDateSelection) {
        day = m_bindings.pendingDateSelection->value().toLocalTime().date();
        m_bindings.pendingDateSelection->reset();
    }
    if (m_meetAwaited)
        day = m_meetAwaited->metDate.toLocalTime().date();
    if (!day)
        return;
    if (*day != m_selectedDate)
        setSelectedDate(*day);
    else if (m_controller)
        refresh();
}

void DailyEventsView::openPendingMeet()
{
    if (!m_meetAwaited || m_selectedDate != m_meetAwaited->metDate.toLocalTime().date())
        return;
    const MeetAlarmNavigationPayload awaited = *m_meetAwaited;
    m_meetAwaited.reset();
    for (const MeetEntity& meet : std::as_const(m_events)) {
        if (meet.metName == awaited.metName && meet.metDate == awaited.metDate) {
            m_meetOpenedFromAlarm = meet;
            showDetail(meet);
            return;
        }
    }
}

void DailyEventsView::setHourRange(int startHour, int endHour)
{
    if (startHour < 0 || startHour >= endHour || endHour > 23)
        return;
    m_startHour = startHour;
    m_endHour = endHour;
    UserDefaults defaults = m_services.userDefaults();
    defaults.setValue(startHourKey, startHour);
    defaults.setValue(endHourKey, endHour);
    m_timeline->setHourRange(startHour, endHour);
}

void DailyEventsView::showDetail(const MeetEntity& meet)
{
    if (m_detail)
        m_detail->close();
    m_detail = new MeetDetailView(meet, m_armedMeetIds.contains(meet.metId), this);
    connect(m_detail, &MeetDetailView::onEdit, this, [this, meet] { editMeet(meet); });
    connect(m_detail, &MeetDetailView::onDelete, this, [this, meet] { deleteMeet(meet); });
    connect(m_detail, &MeetDetailView::alarmToggled, this, &DailyEventsView::setAlarm);
    connect(m_detail, &QDialog::finished, this, [this] { m_meetOpenedFromAlarm.reset(); });
    m_detail->open();
}

namespace {

// Saves through work off the GUI thread and answers the editor: no message when saved, the
// error's own message (or the generic one) when not. The editor may be closed meanwhile.
template <typename Work>
CreateEventView::OnSave savingWith(
    DailyEventsView* view, ErrorConsoleStore* console, const QString& action, std::function<void()> onSaved, Work work)
{
    return [view, console, action, onSaved = std::move(onSaved), work](
               const MeetDraft& draft, CreateEventView::Done done) {
        runAsync(
            view,
            [work, draft]() -> std::optional<QString> {
                try {
                    work(draft);
                    return std::nullopt;
                } catch (const std::exception& error) {
                    const QString message = messageOf(error);
                    //% "The event could not be saved"
                    return message.isEmpty() ? qtTrId("create-event-generic-error") : message;
                }
            },
            [console, action, onSaved, done](const std::optional<QString>& failure) {
                if (failure)
                    console->appendLine(action + QStringLiteral(" failed: ") + *failure);
                else
                    onSaved();
                done(failure);
            });
    };
}

} // namespace

void DailyEventsView::openEditor(CreateEventView* editor)
{
    editor->setAttribute(Qt::WA_DeleteOnClose);
    m_editor = editor;
    editor->open();
}

void DailyEventsView::createEvent(const QDateTime& start)
{
    if (!m_controller)
        return;
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    QPointer<DailyEventsView> self(this);
    auto* editor = new CreateEventView(start,
        savingWith(
            this, &m_services.console(), QStringLiteral("DailyEventsController.create"),
            [self] {
                if (self)
                    self->refresh();
            },
            [controller](const MeetDraft& draft) { controller->create(draft); }),
        this);
    editor->setCalendars(m_calendars, m_defaultCalendarIdentifier);
    openEditor(editor);
}

void DailyEventsView::editMeet(const MeetEntity& meet)
{
    if (!m_controller)
        return;
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    QPointer<DailyEventsView> self(this);
    auto* editor = new CreateEventView(meet,
        savingWith(
            this, &m_services.console(), QStringLiteral("DailyEventsController.update"),
            [self] {
                if (self)
                    self->refresh();
            },
            [controller, meet](const MeetDraft& draft) { controller->update(meet, draft); }),
        this);
    m_editedMeet = meet;
    openEditor(editor);
}

std::function<void()> DailyEventsView::undoOf(const QString& step, std::function<void()> otherwise)
{
    UndoHistory& history = m_services.undoHistory();
    if (history.undoText() != step)
        return otherwise;
    return [&history, step] {
        // Something else done since is undone first, from the menu.
        if (history.undoText() == step)
            history.undo();
    };
}

void DailyEventsView::showNotice(const QString& text, std::function<void()> undo)
{
    m_noticeText->setText(text);
    m_undo = std::move(undo);
    m_undoButton->setVisible(bool(m_undo));
    m_notice->show();
    m_noticeTimer->start();
}

void DailyEventsView::moveMeet(
    const MeetEntity& meet, const QDateTime& start, const QDateTime& end, bool undoable, std::optional<bool> allDay)
{
    if (!m_controller)
        return;
    // Everything else as the meet has it: the same draft the editor would save untouched.
    MeetDraft draft;
    draft.title = meet.metName;
    draft.description = meet.metDescription;
    draft.start = start;
    draft.end = end;
    draft.recurrence = meet.metRecurrenceFrequency;
    draft.weekdays = meet.metRecurringWeekdays;
    draft.isAllDay = allDay.value_or(meet.metIsAllDay);
    draft.location = meet.metLocation;
    draft.url = meet.metUrl;
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    runAsync(
        this,
        [controller, meet, draft]() -> std::variant<MeetEntity, QString> {
            try {
                return controller->update(meet, draft, TaskChangeVerbEnum::move);
            } catch (const std::exception& error) {
                const QString message = messageOf(error);
                return message.isEmpty() ? qtTrId("create-event-generic-error") : message;
            }
        },
        [this, meet, undoable](const std::variant<MeetEntity, QString>& outcome) {
            const QString* failed = std::get_if<QString>(&outcome);
            m_moveErrorMessage = failed ? std::optional(*failed) : std::nullopt;
            const std::optional<QString>& failure = m_moveErrorMessage;
            // Either way the day is read again: the meet at its new time, or back where it was.
            refresh();
            if (!failure) {
                if (!undoable)
                    return;
                const MeetEntity moved = std::get<MeetEntity>(outcome);
                //% "Event moved"
                QString text = qtTrId("schedule-notice-moved");
                if (moved.metDate == meet.metDate && moved.metIsAllDay == meet.metIsAllDay) {
                    //% "Event length changed"
                    text = qtTrId("schedule-notice-resized");
                }
                showNotice(
                    text, undoOf(UndoText::describeEvent(TaskChangeVerbEnum::move, moved.metName), [this, moved, meet] {
                        moveMeet(moved, meet.metDate, meet.endDate(), false, meet.metIsAllDay);
                    }));
                return;
            }
            m_services.console().appendLine(QStringLiteral("DailyEventsController.update failed: ") + *failure);
            if (m_moveAlert)
                m_moveAlert->close();
            //% "The event was not moved"
            m_moveAlert = new QMessageBox(
                QMessageBox::Warning, qtTrId("meet-move-failed-title"), *failure, QMessageBox::Ok, this);
            m_moveAlert->setObjectName(QStringLiteral("meetMoveFailedAlert"));
            m_moveAlert->setAttribute(Qt::WA_DeleteOnClose);
            m_moveAlert->open();
        });
}

void DailyEventsView::deleteMeet(const MeetEntity& meet)
{
    if (!m_controller)
        return;
    m_meetPendingDeletion = meet;
    //% "Delete this event?"
    QMessageBox box(QMessageBox::Question, qtTrId("meet-delete-confirmation-title"),
        qtTrId("meet-delete-confirmation-title"), QMessageBox::NoButton, this);
    QString details = meet.metName;
    // A repeating event goes as a whole, from whichever source; better said before than found out.
    if (meet.metRecurrenceFrequency != MeetRecurrenceFrequency::none) {
        //% "Every occurrence of this repeating event is deleted."
        details += QStringLiteral("\n\n") + qtTrId("meet-delete-whole-series-note");
    }
    box.setInformativeText(details);
    box.setObjectName(QStringLiteral("meetDeleteConfirmation"));
    //% "Delete"
    QPushButton* confirm = box.addButton(qtTrId("meet-delete-confirm-button"), QMessageBox::DestructiveRole);
    confirm->setIcon(Icons::symbol(QStringLiteral("trash")));
    //% "Cancel"
    box.addButton(qtTrId("meet-delete-cancel-button"), QMessageBox::RejectRole);
    box.exec();
    if (box.clickedButton() != confirm) {
        m_meetPendingDeletion.reset();
        return;
    }
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    runAsync(
        this,
        [controller, meet]() -> std::optional<QString> {
            try {
                controller->remove(meet);
                return std::nullopt;
            } catch (const std::exception& error) {
                return messageOf(error);
            }
        },
        [this, meet](const std::optional<QString>& failure) {
            m_meetPendingDeletion.reset();
            m_deleteErrorMessage = failure;
            if (failure) {
                m_services.console().appendLine(QStringLiteral("DailyEventsController.delete failed: ") + *failure);
                QMessageBox::warning(this, qtTrId("meet-delete-confirmation-title"), *failure);
                return;
            }
            refresh();
            //% "Event deleted"
            showNotice(qtTrId("schedule-notice-deleted"),
                undoOf(UndoText::describeEvent(TaskChangeVerbEnum::delete_, meet.metName), {}));
        });
}

void DailyEventsView::setAlarm(const MeetEntity& meet, bool armed)
{
    if (!m_controller)
        return;
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    runAsync(
        this, [controller, meet, armed] { return controller->setAlarm(meet, armed); },
        [this, meet](const MeetAlarmScheduler::Arming& arming) {
            // The controller posted the change; the reload that follows refreshes every switch.
            if (!arming)
                showAlarmRefusal(QStringLiteral("DailyEventsController.setAlarm failed: "), *arming.refusal);
        });
}

void DailyEventsView::setDayAlarms(bool armed)
{
    if (!m_controller)
        return;
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    const QList<MeetEntity> meets = m_events;
    runAsync(
        this, [controller, meets, armed] { return controller->setDayAlarms(meets, armed); },
        [this](const MeetAlarmScheduler::Arming& arming) {
            if (!arming)
                showAlarmRefusal(QStringLiteral("DailyEventsController.setDayAlarms failed: "), *arming.refusal);
            m_navigator->setTogglingDayAlarms(false);
            refresh();
        });
}

// A switch that silently falls back to off tells the user nothing; the reason says what to do.
void DailyEventsView::showAlarmRefusal(const QString& consolePrefix, const MeetAlarmError& refusal)
{
    m_alarmErrorMessage = refusal.localizedDescription();
    m_services.console().appendLine(consolePrefix + *m_alarmErrorMessage);
    if (m_alarmAlert)
        m_alarmAlert->close();
    //% "The alarm was not set"
    m_alarmAlert = new QMessageBox(
        QMessageBox::Information, qtTrId("meet-alarm-refused-title"), *m_alarmErrorMessage, QMessageBox::Ok, this);
    m_alarmAlert->setObjectName(QStringLiteral("alarmRefusedAlert"));
    m_alarmAlert->setAttribute(Qt::WA_DeleteOnClose);
    m_alarmAlert->open();
}

void DailyEventsView::blockTime(const MeetTaskLink& link, const std::optional<QDateTime>& start)
{
    if (!m_controller)
        return;
    QDateTime from = start.value_or(QDateTime());
    if (!start) {
        const QDate day = m_selectedDate;
        QDateTime earliest(day, QTime(m_startHour, 0));
        const QDateTime now = m_clock->now().toLocalTime();
        if (now > earliest)
            earliest = now;
        const QList<MeetEntity> meets = m_shownDate == day ? m_events : QList<MeetEntity>();
        const std::optional<QDateTime> free = DailyScheduleLayout::firstFreeSlot(
            meets, earliest, QDateTime(day, QTime(m_endHour, 0)).addSecs(3600), MeetTaskLink::blockSeconds);
        if (!free) {
            //% "There is no free half hour left on this day"
            showTaskFailure(qtTrId("schedule-block-time-no-room"));
            return;
        }
        from = *free;
    }
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    runAsync(
        this,
        [controller, link, from]() -> std::variant<MeetEntity, QString> {
            try {
                return controller->blockTime(link, from);
            } catch (const std::exception& error) {
                const QString message = messageOf(error);
                return message.isEmpty() ? qtTrId("create-event-generic-error") : message;
            }
        },
        [this](const std::variant<MeetEntity, QString>& outcome) {
            refresh();
            if (const QString* failed = std::get_if<QString>(&outcome)) {
                showTaskFailure(*failed);
                return;
            }
            m_taskErrorMessage.reset();
            const MeetEntity made = std::get<MeetEntity>(outcome);
            if (made.metDate.toLocalTime().date() != m_selectedDate)
                setSelectedDate(made.metDate.toLocalTime().date());
            const std::shared_ptr<const DailyEventsController> controller = m_controller;
            //% "Time blocked for the task"
            showNotice(qtTrId("schedule-notice-time-blocked"),
                undoOf(UndoText::describeEvent(TaskChangeVerbEnum::add, made.metName), [this, controller, made] {
                    runAsync(
                        this,
                        [controller, made]() -> std::optional<QString> {
                            try {
                                controller->remove(made);
                                return std::nullopt;
                            } catch (const std::exception& error) {
                                return messageOf(error);
                            }
                        },
                        [this](const std::optional<QString>& failure) {
                            if (failure)
                                showTaskFailure(*failure);
                            refresh();
                        });
                }));
        });
}

void DailyEventsView::setTaskDone(const MeetEntity& meet, bool done)
{
    if (!m_controller || !meet.metTaskLink)
        return;
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    const MeetTaskLink link = *meet.metTaskLink;
    runAsync(
        this,
        [controller, link, done]() -> std::optional<QString> {
            try {
                controller->setTaskDone(link, done);
                return std::nullopt;
            } catch (const std::exception& error) {
                return messageOf(error);
            }
        },
        [this](const std::optional<QString>& failure) {
            // Either way the box shows what the task says now.
            refresh();
            m_projectsPane->reload();
            if (failure)
                showTaskFailure(*failure);
            else
                m_taskErrorMessage.reset();
        });
}

void DailyEventsView::followTaskStates()
{
    if (!m_controller)
        return;
    QList<MeetEntity> linked;
    for (const MeetEntity& meet : std::as_const(m_events)) {
        if (meet.metTaskLink)
            linked.append(meet);
    }
    if (linked.isEmpty())
        return;
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    const QDate day = m_shownDate;
    runAsync(
        this,
        [controller, linked]() mutable {
            std::pair<QList<MeetEntity>, QHash<QUuid, bool>> read {linked, {}};
            controller->followTaskLinks(read.first, read.second);
            return read;
        },
        [this, linked, day](const std::pair<QList<MeetEntity>, QHash<QUuid, bool>>& read) {
            if (day != m_shownDate)
                return;
            bool changed = read.first != linked;
            for (const MeetEntity& meet : linked)
                changed = changed || read.second.value(meet.metId, false) != m_taskDone.value(meet.metId, false)
                    || read.second.contains(meet.metId) != m_taskDone.contains(meet.metId);
            if (changed)
                refresh();
        });
}

void DailyEventsView::showTaskFailure(const QString& message)
{
    m_taskErrorMessage = message;
    m_services.console().appendLine(QStringLiteral("DailyEventsController task link failed: ") + message);
    if (m_moveAlert)
        m_moveAlert->close();
    //% "The task was not changed"
    m_moveAlert
        = new QMessageBox(QMessageBox::Warning, qtTrId("schedule-task-failed-title"), message, QMessageBox::Ok, this);
    m_moveAlert->setObjectName(QStringLiteral("scheduleTaskFailedAlert"));
    m_moveAlert->setAttribute(Qt::WA_DeleteOnClose);
    m_moveAlert->open();
}

void DailyEventsView::followArmedAlarms()
{
    if (!m_controller)
        return;
    if (m_isFollowingAlarms) {
        m_followAlarmsAgain = true;
        return;
    }
    m_isFollowingAlarms = true;
    const std::shared_ptr<const DailyEventsController> controller = m_controller;
    runAsync(
        this, [controller] { return controller->followArmedAlarms(); },
        // A change posts alarmScheduleDidChange, which reads the shown day's bells again.
        [this](bool) {
            m_isFollowingAlarms = false;
            if (std::exchange(m_followAlarmsAgain, false))
                followArmedAlarms();
        });
}
