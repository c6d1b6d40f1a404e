#include "RemoteRepositoryFixture.h"
#include "support/TestMain.h"
#include "tasks/repositories/remote/RemoteTaskListRepositoryImpl.h"

using namespace RemoteFixture;

namespace {

const QString notFound = QStringLiteral("listado no encontrado");
const QString badId = QStringLiteral("el servidor devolvió un listado con un id inválido");

QJsonObject listJson(const QString& id, const QString& projectId, const QString& name)
{
    return {{QStringLiteral("talId"), id}, {QStringLiteral("prjId"), projectId}, {QStringLiteral("talName"), name},
        {QStringLiteral("talDescription"), QString()}, {QStringLiteral("talIsDefault"), false}};
}

QStringList namesOf(const TaskResultEntity& outcome)
{
    QStringList names;
    if (const auto* lists = outcome.dataAs<QList<TaskListEntity>>()) {
        for (const TaskListEntity& list : *lists)
            names.append(list.talName);
    }
    return names;
}

} // namespace

class RemoteTaskListRepositoryTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Backend> m_backend;
    std::unique_ptr<RemoteTaskListRepositoryImpl> m_repository;
    QUuid m_project;

    TaskListEntity aList(const QString& name) const
    {
        return TaskListEntity {.prjId = m_project, .talName = name, .talDescription = name + QStringLiteral(" notes")};
    }

private Q_SLOTS:
    void init()
    {
        m_backend = std::make_unique<Backend>();
        m_repository = std::make_unique<RemoteTaskListRepositoryImpl>(m_backend->client());
        m_project = QUuid::fromString(m_backend->tasks.seed(TasksBackend::Resource::projects,
            {{QStringLiteral("prjUserId"), upper(FakeBackend::defaultUserId())},
                {QStringLiteral("prjName"), QStringLiteral("Home")}, {QStringLiteral("prjDescription"), QString()},
                {QStringLiteral("prjShowEveryDay"), false}}));
    }

    void cleanup()
    {
        m_repository.reset();
        m_backend.reset();
    }

    void shouldSendEachOperationToItsEndpointWithItsBody()
    {
        TaskListEntity errands = aList(QStringLiteral("Errands"));
        errands.talIsDefault = true;
        const TaskResultEntity created = m_repository->create(errands);
        verifySucceeded(created);
        const TaskListEntity stored = *created.dataAs<TaskListEntity>();
        QCOMPARE(upper(stored.talId),
            m_backend->tasks.records(TasksBackend::Resource::taskLists)
                .first()
                .value(QStringLiteral("talId"))
                .toString());
        errands.talId = stored.talId;
        QCOMPARE(stored, errands);

        TaskListEntity renamed = stored;
        renamed.talName = QStringLiteral("Chores");
        renamed.talIsDefault = false;
        QCOMPARE(*m_repository->update(renamed).dataAs<TaskListEntity>(), renamed);
        QCOMPARE(*m_repository->find(stored.talId).dataAs<TaskListEntity>(), renamed);
        verifySucceeded(m_repository->delete_(stored.talId));

        const QString path = QStringLiteral("/v0/task-lists/") + upper(stored.talId);
        const QList<RecordedRequest> wire = m_backend->http.requests();
        QCOMPARE(wire.size(), 4);
        verifyRequest(wire.at(0), "POST", QStringLiteral("/v0/task-lists"),
            QJsonObject {{QStringLiteral("prjId"), upper(m_project)}, {QStringLiteral("talId"), upper(stored.talId)},
                {QStringLiteral("talName"), QStringLiteral("Errands")},
                {QStringLiteral("talDescription"), QStringLiteral("Errands notes")},
                {QStringLiteral("talIsDefault"), true}});
        verifyRequest(wire.at(1), "PUT", path,
            QJsonObject {{QStringLiteral("talName"), QStringLiteral("Chores")},
                {QStringLiteral("talDescription"), QStringLiteral("Errands notes")},
                {QStringLiteral("talIsDefault"), false}});
        verifyRequest(wire.at(2), "GET", path);
        verifyRequest(wire.at(3), "DELETE", path);
    }

    void shouldListAProjectsListsInTheBackendsOrderWithoutTheUnreadableOnes()
    {
        const QString project = upper(m_project);
        m_backend->tasks.seed(
            TasksBackend::Resource::taskLists, listJson(upper(QUuid::createUuid()), project, QStringLiteral("B")));
        m_backend->tasks.seed(
            TasksBackend::Resource::taskLists, listJson(QStringLiteral("x"), project, QStringLiteral("Odd")));
        m_backend->tasks.seed(TasksBackend::Resource::taskLists,
            listJson(upper(QUuid::createUuid()), upper(QUuid::createUuid()), QStringLiteral("Other project")));
        m_backend->tasks.seed(
            TasksBackend::Resource::taskLists, listJson(upper(QUuid::createUuid()), project, QStringLiteral("A")));

        const TaskResultEntity outcome = m_repository->list(m_project);

        verifySucceeded(outcome);
        QCOMPARE(namesOf(outcome), (QStringList {QStringLiteral("B"), QStringLiteral("A")}));
        const RecordedRequest wire = m_backend->http.requests().last();
        verifyRequest(wire, "GET", QStringLiteral("/v0/task-lists?projectId=") + project);
    }

    void shouldRefuseASingleListWithAnUnreadableIdentifier()
    {
        const QString id = m_backend->tasks.seed(TasksBackend::Resource::taskLists,
            listJson(upper(QUuid::createUuid()), QStringLiteral("project-1"), QStringLiteral("A")));
        verifyRemoteFailure(m_repository->find(QUuid::fromString(id)), badId);

        m_backend->http.enqueue(
            FakeResponse::json(201, listJson(QStringLiteral(""), upper(m_project), QStringLiteral("B"))));
        verifyRemoteFailure(m_repository->create(aList(QStringLiteral("B"))), badId);
    }

    void shouldSayListNotFoundOnEveryOperation()
    {
        const TaskListEntity list = aList(QStringLiteral("Gone"));
        RemoteTaskListRepositoryImpl& repository = *m_repository;
        verifyNotFoundOnEveryOperation(*m_backend,
            {{"create", [&] { return repository.create(list); }}, {"update", [&] { return repository.update(list); }},
                {"delete", [&] { return repository.delete_(list.talId); }},
                {"find", [&] { return repository.find(list.talId); }},
                {"list", [&] { return repository.list(m_project); }}},
            notFound);
        verifyRemoteFailure(m_repository->update(list), notFound);
    }

    void shouldPassOtherFailuresThroughTheirTexts()
    {
        m_backend->http.enqueue(FakeResponse::text(503, "down"));
        verifyRemoteFailure(m_repository->list(m_project), QStringLiteral("error del servidor (503)"));
        // The backend refuses a list for a project the user does not have; its reason is shown.
        TaskListEntity orphan = aList(QStringLiteral("Orphan"));
        orphan.prjId = QUuid::createUuid();
        verifyRemoteFailure(m_repository->create(orphan), QStringLiteral("\"prjId\" names no project of the user"));
    }
};

TOLVANE_TEST_MAIN(RemoteTaskListRepositoryTest)
#include "RemoteTaskListRepositoryTest.moc"
