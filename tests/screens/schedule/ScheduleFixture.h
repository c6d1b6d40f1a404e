#pragma once

#include "platform/Clock.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/schedule/DailyEventsView.h"
#include "support/ui/AppFixture.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTranslator>
#include <QUuid>

#include <memory>
#include <optional>
#include <stdexcept>

// The schedule screen over the session's real calendar store, for the schedule's tests: scratch
// services with a local user, calendars made for the test and switched off again after it, and
// the screen opened and moved to a day, each waited for. A test class derives from it, calls
// setUpSchedule() in init() and tearDownSchedule() in cleanup().
class ScheduleFixture {
protected:
    std::unique_ptr<AppFixture> app;
    std::unique_ptr<DailyEventsView> view;
    QStringList calendarsMade;
    QTranslator english;

    // The English texts, so that the tests read what the screen says.
    void loadEnglish()
    {
        if (!english.load(QStringLiteral(":/i18n/tolvane_en")))
            throw std::runtime_error("no English texts");
        QCoreApplication::installTranslator(&english);
    }

    void setUpSchedule()
    {
        app = std::make_unique<AppFixture>();
        app->storeLocalUser();
    }

    void tearDownSchedule()
    {
        view.reset();
        app.reset();
        for (const QString& identifier : std::as_const(calendarsMade))
            CalendarStore::shared().disableCalendar(identifier);
        calendarsMade.clear();
    }

    // A new calendar "On This Computer".
    QString addCalendar(const QString& title)
    {
        const QString identifier = QStringLiteral("tolvane-test-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
        CalendarStore::shared().addLocalCalendar(identifier, title, QStringLiteral("#3E8BFF"));
        calendarsMade.append(identifier);
        return identifier;
    }

    // The screen shown at size, once its first day has loaded.
    DailyEventsView* open(const QSize& size, std::shared_ptr<const Clock> clock = nullptr)
    {
        view = std::make_unique<DailyEventsView>(app->services(), DailyEventsView::Bindings {}, nullptr, clock);
        view->resize(size);
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->show();
        if (loaded.isEmpty() && !loaded.wait(45000))
            throw std::runtime_error("the day never loaded");
        return view.get();
    }

    void showDay(const QDate& day)
    {
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->setSelectedDate(day);
        if (loaded.isEmpty() && !loaded.wait(45000))
            throw std::runtime_error("the day never loaded");
    }

    std::optional<MeetEntity> shown(const QString& name) const
    {
        for (const MeetEntity& meet : view->events()) {
            if (meet.metName == name)
                return meet;
        }
        return std::nullopt;
    }
};
