#include "RemoteRepositoryFixture.h"
#include "support/TestMain.h"
#include "tasks/repositories/remote/RemoteTaskRepositoryImpl.h"

#include <QTimeZone>

using namespace RemoteFixture;

Q_DECLARE_METATYPE(std::optional<EisenhowerTagEnum>)

namespace {

const QString notFound = QStringLiteral("tarea no encontrada");
const QString badId = QStringLiteral("el servidor devolvió una tarea con un id inválido");
const QDateTime dueAtNineUtc(QDate(2026, 11, 21), QTime(9, 0), Qt::UTC);

} // namespace

class RemoteTaskRepositoryTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Backend> m_backend;
    std::unique_ptr<RemoteTaskRepositoryImpl> m_repository;
    QUuid m_project;
    QUuid m_list;

    TaskEntity aTask(const QString& title) const
    {
        TaskEntity task;
        task.prjId = m_project;
        task.talId = m_list;
        task.tasTitle = title;
        return task;
    }

    // A task as the backend holds it, with the members a test wants to change.
    QString seedTask(const QString& title, const QJsonObject& overrides = {}) const
    {
        QJsonObject task {{QStringLiteral("prjId"), upper(m_project)}, {QStringLiteral("talId"), upper(m_list)},
            {QStringLiteral("tasTitle"), title}, {QStringLiteral("tasIsDone"), false},
            {QStringLiteral("tasDueDate"), QJsonValue::Null}, {QStringLiteral("tasEisenhowerTag"), QJsonValue::Null}};
        for (auto it = overrides.begin(); it != overrides.end(); ++it)
            task.insert(it.key(), it.value());
        return m_backend->tasks.seed(TasksBackend::Resource::tasks, task);
    }

    QJsonObject stored(const QString& id) const
    {
        return m_backend->tasks.record(TasksBackend::Resource::tasks, id).value_or(QJsonObject());
    }

    QStringList titlesOf(const TaskResultEntity& outcome) const
    {
        QStringList titles;
        if (const auto* tasks = outcome.dataAs<QList<TaskEntity>>()) {
            for (const TaskEntity& task : *tasks)
                titles.append(task.tasTitle);
        }
        return titles;
    }

private Q_SLOTS:
    void init()
    {
        m_backend = std::make_unique<Backend>();
        m_repository = std::make_unique<RemoteTaskRepositoryImpl>(m_backend->client());
        m_project = QUuid::createUuid();
        m_list = QUuid::fromString(m_backend->tasks.seed(TasksBackend::Resource::taskLists,
            {{QStringLiteral("prjId"), upper(m_project)}, {QStringLiteral("talName"), QStringLiteral("Inbox")},
                {QStringLiteral("talDescription"), QString()}, {QStringLiteral("talIsDefault"), true}}));
    }

    void cleanup()
    {
        m_repository.reset();
        m_backend.reset();
    }

    void shouldCreateWithOnlyTheOptionalKeysThatAreSet()
    {
        TaskEntity tagged = aTask(QStringLiteral("File taxes"));
        tagged.tasDueDate = QDateTime(QDate(2026, 11, 21), QTime(10, 0), QTimeZone(3600));
        tagged.tasEisenhowerTag = EisenhowerTagEnum::doIt;
        const TaskResultEntity created = m_repository->create(tagged);
        verifySucceeded(created);
        const TaskEntity fromBackend = *created.dataAs<TaskEntity>();
        QCOMPARE(fromBackend, tagged);
        QCOMPARE(stored(upper(tagged.tasId)).value(QStringLiteral("tasEisenhowerTag")).toString(),
            QStringLiteral("urgent_important"));

        const TaskResultEntity plain = m_repository->create(aTask(QStringLiteral("Call mum")));
        verifySucceeded(plain);
        QCOMPARE(plain.dataAs<TaskEntity>()->tasEisenhowerTag, std::nullopt);
        QCOMPARE(plain.dataAs<TaskEntity>()->tasDueDate, std::nullopt);

        const QList<RecordedRequest> wire = m_backend->http.requests();
        QCOMPARE(wire.size(), 2);
        verifyRequest(wire.at(0), "POST", QStringLiteral("/v0/tasks"),
            QJsonObject {{QStringLiteral("prjId"), upper(m_project)}, {QStringLiteral("talId"), upper(m_list)},
                {QStringLiteral("tasId"), upper(tagged.tasId)},
                {QStringLiteral("tasTitle"), QStringLiteral("File taxes")},
                {QStringLiteral("tasDueDate"), QStringLiteral("2026-11-21T09:00:00Z")},
                {QStringLiteral("tasEisenhowerTag"), QStringLiteral("urgent_important")}});
        verifyRequest(wire.at(1), "POST", QStringLiteral("/v0/tasks"),
            QJsonObject {{QStringLiteral("prjId"), upper(m_project)}, {QStringLiteral("talId"), upper(m_list)},
                {QStringLiteral("tasId"), upper(plain.dataAs<TaskEntity>()->tasId)},
                {QStringLiteral("tasTitle"), QStringLiteral("Call mum")}});
    }

    void shouldUpdateWithTitleAndDoneAlwaysAndTheRestWhenSet_data()
    {
        QTest::addColumn<bool>("withDueDate");
        QTest::addColumn<bool>("withTag");
        QTest::newRow("neither") << false << false;
        QTest::newRow("due date") << true << false;
        QTest::newRow("tag") << false << true;
        QTest::newRow("both") << true << true;
    }

    void shouldUpdateWithTitleAndDoneAlwaysAndTheRestWhenSet()
    {
        QFETCH(bool, withDueDate);
        QFETCH(bool, withTag);
        const QString id = seedTask(QStringLiteral("Old"),
            {{QStringLiteral("tasDueDate"), QStringLiteral("2026-01-01T00:00:00Z")},
                {QStringLiteral("tasEisenhowerTag"), QStringLiteral("urgent_not_important")}});
        TaskEntity task = aTask(QStringLiteral("New"));
        task.tasId = QUuid::fromString(id);
        task.tasIsDone = true;
        QJsonObject expected {{QStringLiteral("tasTitle"), QStringLiteral("New")}, {QStringLiteral("tasIsDone"), true}};
        if (withDueDate) {
            task.tasDueDate = dueAtNineUtc;
            expected.insert(QStringLiteral("tasDueDate"), QStringLiteral("2026-11-21T09:00:00Z"));
        }
        if (withTag) {
            task.tasEisenhowerTag = EisenhowerTagEnum::delete_;
            expected.insert(QStringLiteral("tasEisenhowerTag"), QStringLiteral("not_urgent_not_important"));
        }

        const TaskResultEntity outcome = m_repository->update(task);

        verifySucceeded(outcome);
        QCOMPARE(*outcome.dataAs<TaskEntity>(), task);
        verifyRequest(m_backend->http.requests().last(), "PUT", QStringLiteral("/v0/tasks/") + id, expected);
    }

    void shouldChangeOneFieldByReadingAndWritingBackTheWholeTask()
    {
        const QString id = seedTask(QStringLiteral("Plan"),
            {{QStringLiteral("tasDueDate"), QStringLiteral("2026-11-21T09:00:00Z")},
                {QStringLiteral("tasEisenhowerTag"), QStringLiteral("not_urgent_important")}});
        const QUuid taskId = QUuid::fromString(id);
        const QString path = QStringLiteral("/v0/tasks/") + id;
        const QJsonObject kept {{QStringLiteral("tasTitle"), QStringLiteral("Plan")},
            {QStringLiteral("tasDueDate"), QStringLiteral("2026-11-21T09:00:00Z")}};
        auto body = [&](bool done, std::optional<QString> tag) {
            QJsonObject json = kept;
            json.insert(QStringLiteral("tasIsDone"), done);
            if (tag)
                json.insert(QStringLiteral("tasEisenhowerTag"), *tag);
            return json;
        };

        const TaskResultEntity done = m_repository->markDone(taskId);
        verifySucceeded(done);
        QCOMPARE(done.dataAs<TaskEntity>()->tasIsDone, true);
        QCOMPARE(done.dataAs<TaskEntity>()->tasEisenhowerTag, std::optional(EisenhowerTagEnum::planning));
        const TaskResultEntity cleared = m_repository->setTag(taskId, std::nullopt);
        verifySucceeded(cleared);
        QCOMPARE(cleared.dataAs<TaskEntity>()->tasEisenhowerTag, std::nullopt);
        verifySucceeded(m_repository->setTag(taskId, EisenhowerTagEnum::doIt));
        verifySucceeded(m_repository->markNotDone(taskId));

        const QList<RecordedRequest> wire = m_backend->http.requests();
        QCOMPARE(wire.size(), 8);
        verifyRequest(wire.at(0), "GET", path);
        verifyRequest(wire.at(1), "PUT", path, body(true, QStringLiteral("not_urgent_important")));
        verifyRequest(wire.at(2), "GET", path);
        verifyRequest(wire.at(3), "PUT", path, body(true, std::nullopt));
        verifyRequest(wire.at(4), "GET", path);
        verifyRequest(wire.at(5), "PUT", path, body(true, QStringLiteral("urgent_important")));
        verifyRequest(wire.at(6), "GET", path);
        verifyRequest(wire.at(7), "PUT", path, body(false, QStringLiteral("urgent_important")));
        QCOMPARE(stored(id).value(QStringLiteral("tasIsDone")), QJsonValue(false));
    }

    void shouldNotWriteWhenTheReadFails()
    {
        verifyRemoteFailure(m_repository->setDone(QUuid::createUuid(), true), notFound);
        const QString unreadable = seedTask(QStringLiteral("Odd"), {{QStringLiteral("talId"), QStringLiteral("x")}});
        verifyRemoteFailure(m_repository->setTag(QUuid::fromString(unreadable), EisenhowerTagEnum::doIt), badId);
        m_backend->http.enqueue(FakeResponse::text(500, "boom"), "GET");
        verifyRemoteFailure(
            m_repository->markDone(QUuid::fromString(unreadable)), QStringLiteral("error del servidor (500)"));

        for (const RecordedRequest& request : m_backend->http.requests())
            QCOMPARE(request.method, QByteArray("GET"));
        QCOMPARE(stored(unreadable).value(QStringLiteral("tasEisenhowerTag")), QJsonValue(QJsonValue::Null));
    }

    void shouldReadOnlyTheExactApiStringsAsTags_data()
    {
        QTest::addColumn<QJsonValue>("tag");
        QTest::addColumn<std::optional<EisenhowerTagEnum>>("expected");
        QTest::newRow("urgent_important")
            << QJsonValue(QStringLiteral("urgent_important")) << std::optional(EisenhowerTagEnum::doIt);
        QTest::newRow("not_urgent_not_important")
            << QJsonValue(QStringLiteral("not_urgent_not_important")) << std::optional(EisenhowerTagEnum::delete_);
        QTest::newRow("upper case") << QJsonValue(QStringLiteral("URGENT_IMPORTANT"))
                                    << std::optional<EisenhowerTagEnum>();
        QTest::newRow("unknown word") << QJsonValue(QStringLiteral("urgent")) << std::optional<EisenhowerTagEnum>();
        QTest::newRow("stored raw value") << QJsonValue(QStringLiteral("do")) << std::optional<EisenhowerTagEnum>();
        QTest::newRow("empty") << QJsonValue(QString()) << std::optional<EisenhowerTagEnum>();
        QTest::newRow("null") << QJsonValue(QJsonValue::Null) << std::optional<EisenhowerTagEnum>();
        QTest::newRow("absent") << QJsonValue(QJsonValue::Undefined) << std::optional<EisenhowerTagEnum>();
    }

    void shouldReadOnlyTheExactApiStringsAsTags()
    {
        QFETCH(QJsonValue, tag);
        QFETCH(std::optional<EisenhowerTagEnum>, expected);
        QJsonObject task {{QStringLiteral("prjId"), upper(m_project)}, {QStringLiteral("talId"), upper(m_list)},
            {QStringLiteral("tasTitle"), QStringLiteral("T")}, {QStringLiteral("tasIsDone"), false}};
        if (!tag.isUndefined())
            task.insert(QStringLiteral("tasEisenhowerTag"), tag);
        const QString id = m_backend->tasks.seed(TasksBackend::Resource::tasks, task);

        const TaskResultEntity found = m_repository->find(QUuid::fromString(id));
        const TaskResultEntity listed = m_repository->list(m_list);

        verifySucceeded(found);
        QCOMPARE(found.dataAs<TaskEntity>()->tasEisenhowerTag, expected);
        QCOMPARE(found.dataAs<TaskEntity>()->tasDueDate, std::nullopt);
        verifySucceeded(listed);
        QCOMPARE(listed.dataAs<QList<TaskEntity>>()->size(), 1);
        QCOMPARE(listed.dataAs<QList<TaskEntity>>()->first().tasEisenhowerTag, expected);
    }

    void shouldListAListsTasksWithoutTheUnreadableOnes()
    {
        seedTask(QStringLiteral("First"));
        seedTask(QStringLiteral("Bad project"), {{QStringLiteral("prjId"), QStringLiteral("p")}});
        seedTask(QStringLiteral("Other list"), {{QStringLiteral("talId"), upper(QUuid::createUuid())}});
        seedTask(QStringLiteral("Bad id"), {{QStringLiteral("tasId"), QStringLiteral("12345")}});
        seedTask(QStringLiteral("Last"), {{QStringLiteral("tasIsDone"), true}});

        const TaskResultEntity outcome = m_repository->list(m_list);

        verifySucceeded(outcome);
        QCOMPARE(titlesOf(outcome), (QStringList {QStringLiteral("First"), QStringLiteral("Last")}));
        verifyRequest(
            m_backend->http.requests().last(), "GET", QStringLiteral("/v0/tasks?taskListId=") + upper(m_list));
    }

    void shouldDeleteTheCompletedTasksOfAListInOneConfirmedRequest()
    {
        seedTask(QStringLiteral("Open"));
        seedTask(QStringLiteral("Done"), {{QStringLiteral("tasIsDone"), true}});
        const QString elsewhere = seedTask(QStringLiteral("Done elsewhere"),
            {{QStringLiteral("talId"), upper(QUuid::createUuid())}, {QStringLiteral("tasIsDone"), true}});
        const QString path = QStringLiteral("/v0/task-lists/") + upper(m_list) + QStringLiteral("/completed-tasks");

        verifySucceeded(m_repository->deleteCompleted(m_list));
        QCOMPARE(titlesOf(m_repository->list(m_list)), QStringList {QStringLiteral("Open")});
        QVERIFY(m_backend->tasks.record(TasksBackend::Resource::tasks, elsewhere));
        // Nothing left to delete is not a failure.
        verifySucceeded(m_repository->deleteCompleted(m_list));
        QCOMPARE(titlesOf(m_repository->list(m_list)), QStringList {QStringLiteral("Open")});

        const QList<RecordedRequest> wire = m_backend->http.requests();
        QCOMPARE(wire.size(), 4);
        verifyRequest(wire.at(0), "DELETE", path, QJsonObject {{QStringLiteral("confirm"), true}});
        verifyRequest(wire.at(2), "DELETE", path, QJsonObject {{QStringLiteral("confirm"), true}});
    }

    void shouldSayTaskNotFoundOnEveryOperation()
    {
        const TaskEntity task = aTask(QStringLiteral("Gone"));
        RemoteTaskRepositoryImpl& repository = *m_repository;
        verifyNotFoundOnEveryOperation(*m_backend,
            {{"create", [&] { return repository.create(task); }}, {"update", [&] { return repository.update(task); }},
                {"setDone", [&] { return repository.setDone(task.tasId, true); }},
                {"setTag", [&] { return repository.setTag(task.tasId, EisenhowerTagEnum::planning); }},
                {"delete", [&] { return repository.delete_(task.tasId); }},
                {"deleteCompleted", [&] { return repository.deleteCompleted(task.talId); }},
                {"find", [&] { return repository.find(task.tasId); }},
                {"list", [&] { return repository.list(task.talId); }}},
            notFound);
        verifyRemoteFailure(m_repository->deleteCompleted(QUuid::createUuid()), notFound);
    }

    void shouldRefuseASingleTaskWithAnUnreadableIdentifier()
    {
        m_backend->http.enqueue(FakeResponse::json(201,
            QJsonObject {{QStringLiteral("tasId"), upper(QUuid::createUuid())},
                {QStringLiteral("prjId"), upper(m_project)}, {QStringLiteral("talId"), QStringLiteral("list")},
                {QStringLiteral("tasTitle"), QStringLiteral("T")}, {QStringLiteral("tasIsDone"), false}}));
        verifyRemoteFailure(m_repository->create(aTask(QStringLiteral("T"))), badId);
    }
};

TOLVANE_TEST_MAIN(RemoteTaskRepositoryTest)
#include "RemoteTaskRepositoryTest.moc"
