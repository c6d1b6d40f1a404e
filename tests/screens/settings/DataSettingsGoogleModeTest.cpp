#include "meetings/repositories/eventkit/LiveEventKitStore.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "screens/schedule/DailyEventsController.h"
#include "screens/settings/DataSettingsView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"

#include <QDateEdit>
#include <QFile>
#include <QScopeGuard>
#include <QSignalSpy>

#define LIBICAL_GLIB_UNSTABLE_API 1
#include <libical-glib/libical-glib.h>

namespace {

// The event of that summary, or null; the caller unrefs it.
ICalComponent* eventNamed(ICalComponent* calendar, const QString& summary)
{
    for (ICalComponent* event = i_cal_component_get_first_component(calendar, I_CAL_VEVENT_COMPONENT); event;
         event = i_cal_component_get_next_component(calendar, I_CAL_VEVENT_COMPONENT)) {
        if (QString::fromUtf8(i_cal_component_get_summary(event)) == summary)
            return event;
        g_object_unref(event);
    }
    return nullptr;
}

struct ReadEvent {
    QDateTime start;
    QDateTime end;
    QString description;
};

std::optional<ReadEvent> read(ICalComponent* calendar, const QString& summary)
{
    ICalComponent* event = eventNamed(calendar, summary);
    if (!event)
        return std::nullopt;
    ICalTime* start = i_cal_component_get_dtstart(event);
    ICalTime* end = i_cal_component_get_dtend(event);
    const auto instant = [](ICalTime* time) {
        return QDateTime::fromSecsSinceEpoch(i_cal_time_as_timet_with_zone(time, i_cal_time_get_timezone(time)));
    };
    ReadEvent found {instant(start), instant(end), QString::fromUtf8(i_cal_component_get_description(event))};
    g_object_unref(start);
    g_object_unref(end);
    g_object_unref(event);
    return found;
}

// Every event of that summary, each as its start and its repetition rule (empty without one).
QList<std::pair<QDateTime, QString>> repetitions(ICalComponent* calendar, const QString& summary)
{
    QList<std::pair<QDateTime, QString>> found;
    for (ICalComponent* event = i_cal_component_get_first_component(calendar, I_CAL_VEVENT_COMPONENT); event;
         event = i_cal_component_get_next_component(calendar, I_CAL_VEVENT_COMPONENT)) {
        if (QString::fromUtf8(i_cal_component_get_summary(event)) == summary) {
            ICalTime* start = i_cal_component_get_dtstart(event);
            QString rule;
            if (ICalProperty* property = i_cal_component_get_first_property(event, I_CAL_RRULE_PROPERTY)) {
                ICalRecurrence* recurrence = i_cal_property_get_rrule(property);
                gchar* text = i_cal_recurrence_to_string(recurrence);
                rule = QString::fromUtf8(text);
                g_free(text);
                g_object_unref(recurrence);
                g_object_unref(property);
            }
            found.append(
                {QDateTime::fromSecsSinceEpoch(i_cal_time_as_timet_with_zone(start, i_cal_time_get_timezone(start))),
                    rule});
            g_object_unref(start);
        }
        g_object_unref(event);
    }
    return found;
}

// The lines of the event of that summary that start with name, as the file has them.
QStringList propertyLines(ICalComponent* calendar, const QString& summary, const QString& name)
{
    ICalComponent* event = eventNamed(calendar, summary);
    if (!event)
        return {};
    gchar* text = i_cal_component_as_ical_string(event);
    QStringList lines;
    // Long lines are folded: a line break and a space go on within the same line.
    const QString unfolded = QString::fromUtf8(text).remove(QStringLiteral("\r\n "));
    for (const QString& line : unfolded.split(QStringLiteral("\r\n"))) {
        if (line.startsWith(name + QLatin1Char(';')) || line.startsWith(name + QLatin1Char(':')))
            lines.append(line);
    }
    g_free(text);
    g_object_unref(event);
    return lines;
}

} // namespace

// A Google account's settings page, over the real server on a throwaway PostgreSQL and the
// desktop's calendar store.
class DataSettingsGoogleModeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The .ics file holds the backend's events of the chosen days beside the calendar store's,
    // each with its times and notes, as libecal's parser reads them.
    void meetsOfTheBackendLeaveWithTheCalendarStoresOnes()
    {
        GoogleAccountFixture google;
        QVERIFY(google.signIn().result);
        const std::optional<UserEntity> user = google.app().services().tasksSession().user;
        QVERIFY(user && user->usrIsGoogleAccount);
        const std::optional<CalendarStoreCalendar> personal
            = LiveEventKitStore::shared()->defaultCalendarForNewEvents();
        QVERIFY(personal);

        const DailyEventsController schedule(google.app().services(), user);
        // Whole hours far from midnight: no zone moves them to another day.
        const QDate day(2026, 3, 2);
        MeetDraft review {QStringLiteral("Review"), QStringLiteral("Room 4; bring the plan"),
            QDateTime(day, QTime(10, 0)), QDateTime(day, QTime(11, 30))};
        review.calendarIdentifier = RemoteEventRepositoryImpl::calendarIdentifier;
        MeetDraft later {QStringLiteral("Later"), {}, QDateTime(day.addDays(20), QTime(10, 0)),
            QDateTime(day.addDays(20), QTime(11, 0))};
        later.calendarIdentifier = RemoteEventRepositoryImpl::calendarIdentifier;
        MeetDraft lunch {QStringLiteral("Lunch"), QStringLiteral("Downstairs"), QDateTime(day.addDays(1), QTime(13, 0)),
            QDateTime(day.addDays(1), QTime(14, 0))};
        lunch.calendarIdentifier = personal->identifier;
        QCOMPARE(schedule.create(review).metSource, MeetSource::backend);
        QCOMPARE(schedule.create(later).metSource, MeetSource::backend);
        const MeetEntity stored = schedule.create(lunch);
        QCOMPARE(stored.metSource, MeetSource::eventKit);
        const auto removeStored = qScopeGuard([&] {
            try {
                schedule.remove(stored);
            } catch (const std::exception& error) {
                qWarning("the store's event stays: %s", error.what());
            }
        });

        DataSettingsView page(google.app().services());
        page.findChild<QDateEdit*>(QStringLiteral("meetsFrom"))->setDate(day.addDays(-1));
        page.findChild<QDateEdit*>(QStringLiteral("meetsTo"))->setDate(day.addDays(1));
        QSignalSpy done(&page, &DataSettingsView::workFinished);
        const QString path = google.app().directory() + QStringLiteral("/meets.ics");
        page.exportMeets(path);
        QVERIFY(!done.isEmpty() || done.wait(60000));
        QVERIFY2(done.constFirst().at(0).toBool(), qPrintable(done.constFirst().at(1).toString()));

        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        ICalComponent* calendar = i_cal_component_new_from_string(file.readAll().constData());
        QVERIFY(calendar);
        const auto freeCalendar = qScopeGuard([calendar] { g_object_unref(calendar); });
        const std::optional<ReadEvent> backend = read(calendar, QStringLiteral("Review"));
        QVERIFY(backend);
        QCOMPARE(backend->start, review.start);
        QCOMPARE(backend->end, review.end);
        QCOMPARE(backend->description, review.description);
        const std::optional<ReadEvent> local = read(calendar, QStringLiteral("Lunch"));
        QVERIFY(local);
        QCOMPARE(local->start, lunch.start);
        QCOMPARE(local->end, lunch.end);
        QCOMPARE(local->description, lunch.description);
        QVERIFY(!read(calendar, QStringLiteral("Later")));
    }

    // A repeating backend event with an occurrence among the chosen days leaves once, as the
    // whole event from its first start with its rule, however long before the days it began; one
    // with no occurrence among them stays out.
    void repeatingBackendEventsLeaveWithTheirRule()
    {
        GoogleAccountFixture google;
        QVERIFY(google.signIn().result);
        const std::optional<UserEntity> user = google.app().services().tasksSession().user;
        const DailyEventsController schedule(google.app().services(), user);
        const QDate monday(2026, 3, 2);
        const auto make = [&](const QString& title, const QDate& day, MeetRecurrenceFrequency frequency,
                              const QSet<int>& weekdays) {
            MeetDraft draft {title, {}, QDateTime(day, QTime(9, 0)), QDateTime(day, QTime(9, 30))};
            draft.calendarIdentifier = RemoteEventRepositoryImpl::calendarIdentifier;
            draft.recurrence = frequency;
            draft.weekdays = weekdays;
            return schedule.create(draft);
        };
        const MeetEntity standup
            = make(QStringLiteral("Standup"), monday.addDays(-21), MeetRecurrenceFrequency::weekly, {2, 4});
        QCOMPARE(standup.metSource, MeetSource::backend);
        // Fridays only: none between the Sunday and the Tuesday.
        make(QStringLiteral("Retro"), monday.addDays(-10), MeetRecurrenceFrequency::weekly, {6});
        make(QStringLiteral("Closing"), monday.addDays(-30), MeetRecurrenceFrequency::monthly, {});
        make(QStringLiteral("Backup"), monday.addDays(-400), MeetRecurrenceFrequency::daily, {});
        // Wednesdays, from a Tuesday: the start is listed besides the rule.
        make(QStringLiteral("Planning"), monday.addDays(1), MeetRecurrenceFrequency::weekly, {4});

        DataSettingsView page(google.app().services());
        page.findChild<QDateEdit*>(QStringLiteral("meetsFrom"))->setDate(monday.addDays(-1));
        page.findChild<QDateEdit*>(QStringLiteral("meetsTo"))->setDate(monday.addDays(1));
        QSignalSpy done(&page, &DataSettingsView::workFinished);
        const QString path = google.app().directory() + QStringLiteral("/repeating.ics");
        page.exportMeets(path);
        QVERIFY(!done.isEmpty() || done.wait(60000));
        QVERIFY2(done.constFirst().at(0).toBool(), qPrintable(done.constFirst().at(1).toString()));

        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        ICalComponent* calendar = i_cal_component_new_from_string(file.readAll().constData());
        QVERIFY(calendar);
        const auto freeCalendar = qScopeGuard([calendar] { g_object_unref(calendar); });
        using Read = QList<std::pair<QDateTime, QString>>;
        QCOMPARE(repetitions(calendar, QStringLiteral("Standup")),
            (Read {{standup.metDate, QStringLiteral("FREQ=WEEKLY;BYDAY=MO,WE")}}));
        QCOMPARE(repetitions(calendar, QStringLiteral("Backup")),
            (Read {{QDateTime(monday.addDays(-400), QTime(9, 0)), QStringLiteral("FREQ=DAILY")}}));
        QCOMPARE(repetitions(calendar, QStringLiteral("Planning")),
            (Read {{QDateTime(monday.addDays(1), QTime(9, 0)), QStringLiteral("FREQ=WEEKLY;BYDAY=WE")}}));
        const QStringList extra = propertyLines(calendar, QStringLiteral("Planning"), QStringLiteral("RDATE"));
        QCOMPARE(extra.size(), 1);
        QVERIFY2(extra.constFirst().endsWith(QDateTime(monday.addDays(1), QTime(9, 0)).toString(u"yyyyMMdd'T'hhmmss"))
                || extra.constFirst().endsWith(
                    QDateTime(monday.addDays(1), QTime(9, 0)).toUTC().toString(u"yyyyMMdd'T'hhmmss'Z'")),
            qPrintable(extra.constFirst()));
        QVERIFY(propertyLines(calendar, QStringLiteral("Standup"), QStringLiteral("RDATE")).isEmpty());
        QVERIFY(repetitions(calendar, QStringLiteral("Retro")).isEmpty());
        // The 31st of January repeats on no day of early March.
        QVERIFY(repetitions(calendar, QStringLiteral("Closing")).isEmpty());
    }
};

TOLVANE_GUI_TEST_MAIN(DataSettingsGoogleModeTest)

#include "DataSettingsGoogleModeTest.moc"
