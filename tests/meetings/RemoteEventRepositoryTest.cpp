#include "BackendClient.h"
#include "meetings/domain/MeetIdentity.h"
#include "meetings/repositories/remote/RemoteEventRepositoryError.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "support/TestMain.h"
#include "support/http/EventsBackend.h"

#include <QJsonDocument>

// The backend's events through the API client, against the fake backend on loopback.
namespace {

const QDateTime nine(QDate(2026, 3, 17), QTime(14, 0), Qt::UTC);

QJsonObject body(const RecordedRequest& request)
{
    return QJsonDocument::fromJson(request.body).object();
}

QJsonObject seededEvent(const QString& repeat, const QString& custom)
{
    return {{QStringLiteral("evtTitle"), QStringLiteral("Seeded")},
        {QStringLiteral("evtSchedule"), "2026-03-17T14:00:00Z"}, {QStringLiteral("evtDurationMinutes"), 45},
        {QStringLiteral("evtDescription"), QString()}, {QStringLiteral("evtRepeat"), repeat},
        {QStringLiteral("evtCustomRepeat"), custom}};
}

} // namespace

class RemoteEventRepositoryTest : public QObject {
    Q_OBJECT

    std::unique_ptr<FakeBackend> m_http;
    std::unique_ptr<EventsBackend> m_events;
    bool m_dark = false;
    QSet<QUuid> m_armed;

    RemoteEventRepositoryImpl repository() const
    {
        return RemoteEventRepositoryImpl(
            backendClient(m_http->baseURL(), m_http->bearerToken()), [this] { return m_dark; },
            [this](const QUuid& id) { return m_armed.contains(id); });
    }

private Q_SLOTS:
    void init()
    {
        m_http = std::make_unique<FakeBackend>();
        m_events = std::make_unique<EventsBackend>(*m_http);
        m_dark = false;
        m_armed.clear();
    }

    void shouldCreateUpdateAndDeleteThroughTheEventsResource()
    {
        auto events = repository();
        const MeetEntity created = events.createMeet({QStringLiteral("Review"), QStringLiteral("Notes"), nine,
            nine.addSecs(5400), MeetRecurrenceFrequency::weekly, {6, 2, 4}});
        const RecordedRequest post = m_http->requests().last();
        QCOMPARE(post.method, QByteArray("POST"));
        QCOMPARE(post.path, QStringLiteral("/v0/events"));
        QCOMPARE(body(post),
            (QJsonObject {{QStringLiteral("evtTitle"), QStringLiteral("Review")},
                {QStringLiteral("evtSchedule"), QStringLiteral("2026-03-17T14:00:00Z")},
                {QStringLiteral("evtDurationMinutes"), 90}, {QStringLiteral("evtHasAlarm"), false},
                {QStringLiteral("evtDescription"), QStringLiteral("Notes")},
                {QStringLiteral("evtRepeat"), QStringLiteral("every_week")},
                {QStringLiteral("evtCustomRepeat"), QStringLiteral("mon|wed|fri")}}));

        const QString evtId = m_events->events().front().value(QStringLiteral("evtId")).toString();
        QCOMPARE(created.metOriginalIdentifier, evtId);
        QCOMPARE(created.metId, MeetIdentity::forBackendEvent(evtId));
        QCOMPARE(created.metDate, nine);
        QCOMPARE(created.metDuration, 5400.0);
        QCOMPARE(created.metRecurringWeekdays, QSet<int>({2, 4, 6}));
        QCOMPARE(created.metColor.hexValue, QStringLiteral("#5CC2C6"));
        QCOMPARE(created.metCalendarName, QStringLiteral("Tolvane"));
        QCOMPARE(created.metCalendarIdentifier, QStringLiteral("tolvane-native-calendar"));
        QCOMPARE(created.metSource, MeetSource::backend);
        QCOMPARE(events.fetchMeets(), QList<MeetEntity> {created});

        m_armed.insert(created.metId);
        const MeetEntity updated = events.updateMeet(created,
            {QStringLiteral("Review 2"), QString(), nine, nine.addSecs(1800), MeetRecurrenceFrequency::none, {2}});
        const RecordedRequest put = m_http->requests().last();
        QCOMPARE(put.method, QByteArray("PUT"));
        QCOMPARE(put.path, QStringLiteral("/v0/events/") + evtId);
        QCOMPARE(body(put).value(QStringLiteral("evtHasAlarm")), QJsonValue(true));
        QCOMPARE(body(put).value(QStringLiteral("evtRepeat")), QJsonValue(QStringLiteral("none")));
        QCOMPARE(body(put).value(QStringLiteral("evtCustomRepeat")), QJsonValue(QString()));
        QCOMPARE(updated.metId, created.metId);
        QCOMPARE(updated.metName, QStringLiteral("Review 2"));

        events.deleteMeet(updated);
        QCOMPARE(m_http->requests().last().method, QByteArray("DELETE"));
        QVERIFY(events.fetchMeets().isEmpty());
        QCOMPARE(m_http->requests().last().target, QByteArray("/v0/events"));
    }

    void shouldReadRepeatCodesWeekdaysAndTheAppearancesColour()
    {
        m_events->seed(seededEvent(QStringLiteral("every_week"), QStringLiteral("mon|wed|xyz|fri")));
        m_events->seed(seededEvent(QStringLiteral("every_day"), QStringLiteral("mon")));
        m_events->seed(seededEvent(QStringLiteral("every_month"), QString()));
        m_events->seed(seededEvent(QStringLiteral("every_year"), QString()));
        m_dark = true;
        const QList<MeetEntity> meets = repository().fetchMeets();
        QCOMPARE(meets.size(), 4);
        QCOMPARE(meets.at(0).metRecurrenceFrequency, MeetRecurrenceFrequency::weekly);
        QCOMPARE(meets.at(0).metRecurringWeekdays, QSet<int>({2, 4, 6}));
        QCOMPARE(meets.at(1).metRecurrenceFrequency, MeetRecurrenceFrequency::daily);
        QCOMPARE(meets.at(1).metRecurringWeekdays, QSet<int>());
        QCOMPARE(meets.at(2).metRecurrenceFrequency, MeetRecurrenceFrequency::monthly);
        QCOMPARE(meets.at(3).metRecurrenceFrequency, MeetRecurrenceFrequency::none);
        QCOMPARE(meets.at(0).metColor.hexValue, QStringLiteral("#4FA8AC"));
        QCOMPARE(meets.at(0).metDuration, 2700.0);
        QCOMPARE(repository().fetchMeets().at(0).metId, meets.at(0).metId);
    }

    void shouldReportFailuresWithTheClientsSpanishMessage()
    {
        MeetEntity ghost;
        ghost.metOriginalIdentifier = QStringLiteral("0E2C6F0B-8D6B-4E0B-9E43-3C1F2D7A9B10");
        const MeetDraft draft {QStringLiteral("x"), {}, nine, nine.addSecs(60), MeetRecurrenceFrequency::none, {}};
        const auto messageOf = [](const std::function<void()>& call) {
            try {
                call();
            } catch (const RemoteEventRepositoryError& error) {
                return error.localizedDescription();
            }
            return QStringLiteral("<no error>");
        };
        auto events = repository();
        QCOMPARE(messageOf([&] { events.updateMeet(ghost, draft); }), QStringLiteral("evento no encontrado"));
        QCOMPARE(messageOf([&] { events.deleteMeet(ghost); }), QStringLiteral("evento no encontrado"));
        m_http->enqueue(FakeResponse::text(500, "boom"));
        QCOMPARE(messageOf([&] { events.fetchMeets(); }), QStringLiteral("error del servidor (500)"));
        auto stranger = RemoteEventRepositoryImpl(backendClient(m_http->baseURL(), QStringLiteral("wrong")));
        QCOMPARE(messageOf([&] { stranger.createMeet(draft); }), QStringLiteral("no autorizado"));
        QVERIFY(m_events->events().isEmpty());
    }
};

TOLVANE_TEST_MAIN(RemoteEventRepositoryTest)
#include "RemoteEventRepositoryTest.moc"
