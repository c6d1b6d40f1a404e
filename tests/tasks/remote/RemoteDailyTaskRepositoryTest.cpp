#include "RemoteRepositoryFixture.h"
#include "support/TestMain.h"
#include "tasks/repositories/remote/RemoteDailyTaskRepositoryImpl.h"

#include <QTimeZone>

using namespace RemoteFixture;

namespace {

const QUuid owner = FakeBackend::defaultUserId();
const QString notFound = QStringLiteral("tarea diaria no encontrada");
const QString badId = QStringLiteral("el servidor devolvió una tarea diaria con un id inválido");

QDateTime at(QDate day, QTime time, int hoursAheadOfUtc)
{
    return QDateTime(day, time, QTimeZone(hoursAheadOfUtc * 3600));
}

QJsonObject itemJson(const QString& title, const QString& date, bool done = false)
{
    return {{QStringLiteral("tasUserId"), upper(owner)}, {QStringLiteral("tasDate"), date},
        {QStringLiteral("tasTitle"), title}, {QStringLiteral("tasIsDone"), done}};
}

QStringList titlesOf(const TaskResultEntity& outcome)
{
    QStringList titles;
    if (const auto* items = outcome.dataAs<QList<DailyTaskEntity>>()) {
        for (const DailyTaskEntity& item : *items)
            titles.append(item.dtaTitle);
    }
    return titles;
}

} // namespace

class RemoteDailyTaskRepositoryTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Backend> m_backend;
    std::unique_ptr<RemoteDailyTaskRepositoryImpl> m_repository;

    bool isDone(const QString& id) const
    {
        return m_backend->tasks.record(TasksBackend::Resource::dailyTasks, id)
            .value_or(QJsonObject())
            .value(QStringLiteral("tasIsDone"))
            .toBool();
    }

private Q_SLOTS:
    void init()
    {
        m_backend = std::make_unique<Backend>();
        m_repository = std::make_unique<RemoteDailyTaskRepositoryImpl>(m_backend->client());
    }

    void cleanup()
    {
        m_repository.reset();
        m_backend.reset();
    }

    void shouldTravelUnderTasKeysAndComeBackAsADailyTask()
    {
        DailyTaskEntity item {.dtaUserId = owner,
            .dtaDate = at(QDate(2026, 11, 21), QTime(8, 30), 2),
            .dtaTitle = QStringLiteral("Stretch")};
        const TaskResultEntity created = m_repository->create(item);
        verifySucceeded(created);
        const DailyTaskEntity stored = *created.dataAs<DailyTaskEntity>();
        item.dtaId = stored.dtaId;
        QCOMPARE(stored, item);

        DailyTaskEntity renamed = stored;
        renamed.dtaTitle = QStringLiteral("Stretch twice");
        QCOMPARE(*m_repository->update(renamed).dataAs<DailyTaskEntity>(), renamed);
        QCOMPARE(*m_repository->find(stored.dtaId).dataAs<DailyTaskEntity>(), renamed);
        verifySucceeded(m_repository->delete_(stored.dtaId));

        const QString path = QStringLiteral("/v0/daily-tasks/") + upper(stored.dtaId);
        const QList<RecordedRequest> wire = m_backend->http.requests();
        QCOMPARE(wire.size(), 4);
        verifyRequest(wire.at(0), "POST", QStringLiteral("/v0/daily-tasks"),
            QJsonObject {{QStringLiteral("tasUserId"), upper(owner)}, {QStringLiteral("tasId"), upper(stored.dtaId)},
                {QStringLiteral("tasDate"), QStringLiteral("2026-11-21T06:30:00Z")},
                {QStringLiteral("tasTitle"), QStringLiteral("Stretch")}});
        verifyRequest(
            wire.at(1), "PUT", path, QJsonObject {{QStringLiteral("tasTitle"), QStringLiteral("Stretch twice")}});
        verifyRequest(wire.at(2), "GET", path);
        verifyRequest(wire.at(3), "DELETE", path);
    }

    void shouldAskForTheUtcDayOfTheInstant_data()
    {
        QTest::addColumn<QDateTime>("instant");
        QTest::addColumn<QString>("day");
        const QDate day(2026, 11, 21);
        QTest::newRow("local midnight in UTC+2 is the day before")
            << at(day, QTime(0, 0), 2) << QStringLiteral("2026-11-20");
        QTest::newRow("one second before 02:00 in UTC+2")
            << at(day, QTime(1, 59, 59), 2) << QStringLiteral("2026-11-20");
        QTest::newRow("02:00 in UTC+2 is UTC midnight") << at(day, QTime(2, 0), 2) << QStringLiteral("2026-11-21");
        QTest::newRow("late evening in UTC-5 is the day after")
            << at(day, QTime(19, 0), -5) << QStringLiteral("2026-11-22");
        QTest::newRow("one second before 19:00 in UTC-5")
            << at(day, QTime(18, 59, 59), -5) << QStringLiteral("2026-11-21");
        QTest::newRow("local midnight in UTC-5") << at(day, QTime(0, 0), -5) << QStringLiteral("2026-11-21");
        QTest::newRow("new year's eve in UTC-5")
            << at(QDate(2026, 12, 31), QTime(23, 30), -5) << QStringLiteral("2027-01-01");
    }

    void shouldAskForTheUtcDayOfTheInstant()
    {
        QFETCH(QDateTime, instant);
        QFETCH(QString, day);
        m_backend->tasks.seed(
            TasksBackend::Resource::dailyTasks, itemJson(QStringLiteral("Wanted"), day + QStringLiteral("T12:00:00Z")));
        m_backend->tasks.seed(TasksBackend::Resource::dailyTasks,
            itemJson(QStringLiteral("Local day"), instant.date().toString(Qt::ISODate) + QStringLiteral("T12:00:00Z")));

        const TaskResultEntity outcome = m_repository->list(instant);

        verifySucceeded(outcome);
        verifyRequest(m_backend->http.requests().last(), "GET", QStringLiteral("/v0/daily-tasks?date=") + day);
        const QStringList expected = instant.date().toString(Qt::ISODate) == day
            ? QStringList {QStringLiteral("Wanted"), QStringLiteral("Local day")}
            : QStringList {QStringLiteral("Wanted")};
        QCOMPARE(titlesOf(outcome), expected);
    }

    void shouldToggleWithBodilessPatchesAndNotReadTheAnswer()
    {
        const QString id = m_backend->tasks.seed(TasksBackend::Resource::dailyTasks,
            itemJson(QStringLiteral("Walk"), QStringLiteral("2026-11-21T12:00:00Z")));
        const QUuid itemId = QUuid::fromString(id);

        verifySucceeded(m_repository->toggle(itemId));
        QCOMPARE(isDone(id), true);
        verifySucceeded(m_repository->toggle(itemId));
        QCOMPARE(isDone(id), false);
        m_backend->http.enqueue(FakeResponse::text(200, "flipped, probably"), "PATCH");
        verifySucceeded(m_repository->toggle(itemId));

        const QList<RecordedRequest> wire = m_backend->http.requests();
        QCOMPARE(wire.size(), 3);
        for (const RecordedRequest& request : wire) {
            verifyRequest(request, "PATCH", QStringLiteral("/v0/daily-tasks/") + id + QStringLiteral("/toggle"));
            QVERIFY(request.header("Content-Length").isEmpty() || request.header("Content-Length") == "0");
        }
        m_backend->http.clearRequests();
        verifyRemoteFailure(m_repository->toggle(QUuid::createUuid()), notFound);
    }

    void shouldToggleOnlyWhenTheFlagDiffers()
    {
        const QString id = m_backend->tasks.seed(TasksBackend::Resource::dailyTasks,
            itemJson(QStringLiteral("Read"), QStringLiteral("2026-11-21T12:00:00Z")));
        const QUuid itemId = QUuid::fromString(id);
        const QString path = QStringLiteral("/v0/daily-tasks/") + id;

        verifySucceeded(m_repository->setDone(itemId, false));
        verifySucceeded(m_repository->setDone(itemId, true));
        verifySucceeded(m_repository->setDone(itemId, true));
        QCOMPARE(isDone(id), true);

        const QList<RecordedRequest> wire = m_backend->http.requests();
        QCOMPARE(wire.size(), 4);
        verifyRequest(wire.at(0), "GET", path);
        verifyRequest(wire.at(1), "GET", path);
        verifyRequest(wire.at(2), "PATCH", path + QStringLiteral("/toggle"));
        verifyRequest(wire.at(3), "GET", path);

        m_backend->http.clearRequests();
        verifyRemoteFailure(m_repository->setDone(QUuid::createUuid(), true), notFound);
        QCOMPARE(m_backend->http.requests().size(), 1);
    }

    void shouldSayDailyTaskNotFoundOnEveryOperation()
    {
        const DailyTaskEntity item {
            .dtaUserId = owner, .dtaDate = at(QDate(2026, 11, 21), QTime(9, 0), 0), .dtaTitle = QStringLiteral("Gone")};
        RemoteDailyTaskRepositoryImpl& repository = *m_repository;
        verifyNotFoundOnEveryOperation(*m_backend,
            {{"create", [&] { return repository.create(item); }}, {"update", [&] { return repository.update(item); }},
                {"toggle", [&] { return repository.toggle(item.dtaId); }},
                {"delete", [&] { return repository.delete_(item.dtaId); }},
                {"find", [&] { return repository.find(item.dtaId); }},
                {"list", [&] { return repository.list(item.dtaDate); }},
                {"setDone", [&] { return repository.setDone(item.dtaId, true); }}},
            notFound);
    }

    void shouldRefuseUnreadableIdentifiersAndKeepTheReadableItems()
    {
        const QString day = QStringLiteral("2026-11-21T12:00:00Z");
        m_backend->tasks.seed(TasksBackend::Resource::dailyTasks, itemJson(QStringLiteral("First"), day));
        QJsonObject foreign = itemJson(QStringLiteral("Odd"), day);
        foreign.insert(QStringLiteral("tasUserId"), QStringLiteral("user-7"));
        const QString odd = m_backend->tasks.seed(TasksBackend::Resource::dailyTasks, foreign);
        m_backend->tasks.seed(TasksBackend::Resource::dailyTasks, itemJson(QStringLiteral("Last"), day));

        QCOMPARE(titlesOf(m_repository->list(at(QDate(2026, 11, 21), QTime(12, 0), 0))),
            (QStringList {QStringLiteral("First"), QStringLiteral("Last")}));
        verifyRemoteFailure(m_repository->find(QUuid::fromString(odd)), badId);
        // The flag of an item that cannot be read is left alone.
        verifyRemoteFailure(m_repository->setDone(QUuid::fromString(odd), true), badId);
        QCOMPARE(isDone(odd), false);
    }
};

TOLVANE_TEST_MAIN(RemoteDailyTaskRepositoryTest)
#include "RemoteDailyTaskRepositoryTest.moc"
