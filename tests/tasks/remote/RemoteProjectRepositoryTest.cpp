#include "RemoteRepositoryFixture.h"
#include "support/TestMain.h"
#include "tasks/repositories/remote/RemoteProjectRepositoryImpl.h"
#include "wire/JSONObjectReader.h"
#include "wire/tasks/ProjectResponseDTO.h"

using namespace RemoteFixture;

Q_DECLARE_METATYPE(FakeResponse)

namespace {

const QUuid owner = FakeBackend::defaultUserId();
const QString notFound = QStringLiteral("proyecto no encontrado");
const QString badId = QStringLiteral("el servidor devolvió un proyecto con un id inválido");

ProjectEntity aProject(const QString& name)
{
    return ProjectEntity {.prjUserId = owner, .prjName = name, .prjDescription = name + QStringLiteral(" notes")};
}

QJsonObject projectJson(const QString& id, const QString& userId, const QString& name)
{
    return {{QStringLiteral("prjId"), id}, {QStringLiteral("prjUserId"), userId}, {QStringLiteral("prjName"), name},
        {QStringLiteral("prjDescription"), QString()}, {QStringLiteral("prjShowEveryDay"), false}};
}

QStringList namesOf(const TaskResultEntity& outcome)
{
    QStringList names;
    if (const auto* projects = outcome.dataAs<QList<ProjectEntity>>()) {
        for (const ProjectEntity& project : *projects)
            names.append(project.prjName);
    }
    return names;
}

} // namespace

class RemoteProjectRepositoryTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Backend> m_backend;
    std::unique_ptr<RemoteProjectRepositoryImpl> m_repository;

private Q_SLOTS:
    void init()
    {
        m_backend = std::make_unique<Backend>();
        m_repository = std::make_unique<RemoteProjectRepositoryImpl>(m_backend->client());
    }

    void cleanup()
    {
        m_repository.reset();
        m_backend.reset();
    }

    void shouldCreateUnderTheClientsIdentifier()
    {
        ProjectEntity project = aProject(QStringLiteral(" Home "));
        project.prjShowEveryDay = true;

        const TaskResultEntity outcome = m_repository->create(project);

        verifySucceeded(outcome);
        const QList<RecordedRequest> wire = m_backend->http.requests();
        QCOMPARE(wire.size(), 1);
        verifyRequest(wire.first(), "POST", QStringLiteral("/v0/projects"),
            QJsonObject {{QStringLiteral("prjUserId"), upper(owner)}, {QStringLiteral("prjId"), upper(project.prjId)},
                {QStringLiteral("prjName"), QStringLiteral(" Home ")},
                {QStringLiteral("prjDescription"), QStringLiteral(" Home  notes")},
                {QStringLiteral("prjShowEveryDay"), true}});
        QCOMPARE(wire.first().header("Content-Type"), QByteArray("application/json"));
        const QList<QJsonObject> stored = m_backend->tasks.records(TasksBackend::Resource::projects);
        QCOMPARE(stored.size(), 1);
        const auto* created = outcome.dataAs<ProjectEntity>();
        QVERIFY(created);
        QCOMPARE(upper(created->prjId), stored.first().value(QStringLiteral("prjId")).toString());
        QCOMPARE(*created, project);
    }

    void shouldUpdateFindListAndDeleteThroughTheirEndpoints()
    {
        const ProjectEntity home = *m_repository->create(aProject(QStringLiteral("Home"))).dataAs<ProjectEntity>();
        const ProjectEntity work = *m_repository->create(aProject(QStringLiteral("Work"))).dataAs<ProjectEntity>();
        m_backend->http.clearRequests();
        const QString homePath = QStringLiteral("/v0/projects/") + upper(home.prjId);

        ProjectEntity renamed = home;
        renamed.prjName = QStringLiteral("House");
        renamed.prjShowEveryDay = true;
        const TaskResultEntity updated = m_repository->update(renamed);
        verifySucceeded(updated);
        QCOMPARE(*updated.dataAs<ProjectEntity>(), renamed);

        const TaskResultEntity found = m_repository->find(home.prjId);
        verifySucceeded(found);
        QCOMPARE(*found.dataAs<ProjectEntity>(), renamed);

        // The backend knows the user from the token; the argument does not travel.
        const TaskResultEntity listed = m_repository->list(QUuid::createUuid());
        QCOMPARE(namesOf(listed), (QStringList {QStringLiteral("House"), QStringLiteral("Work")}));

        verifySucceeded(m_repository->delete_(work.prjId));
        QCOMPARE(namesOf(m_repository->list(owner)), QStringList {QStringLiteral("House")});

        const QList<RecordedRequest> wire = m_backend->http.requests();
        QCOMPARE(wire.size(), 5);
        verifyRequest(wire.at(0), "PUT", homePath,
            QJsonObject {{QStringLiteral("prjName"), QStringLiteral("House")},
                {QStringLiteral("prjDescription"), QStringLiteral("Home notes")},
                {QStringLiteral("prjShowEveryDay"), true}});
        verifyRequest(wire.at(1), "GET", homePath);
        verifyRequest(wire.at(2), "GET", QStringLiteral("/v0/projects"));
        verifyRequest(wire.at(3), "DELETE", QStringLiteral("/v0/projects/") + upper(work.prjId));
    }

    void shouldLeaveOutListElementsWhoseIdentifiersDoNotRead_data()
    {
        QTest::addColumn<QString>("prjId");
        QTest::addColumn<QString>("prjUserId");
        QTest::addColumn<bool>("kept");
        const QString id = QStringLiteral("6f9619ff-8b86-d011-b42d-00c04fc964ff");
        const QString user = upper(owner);
        QTest::newRow("project id x") << QStringLiteral("x") << user << false;
        QTest::newRow("owner not a UUID") << id << QStringLiteral("not-a-uuid") << false;
        QTest::newRow("braced") << QLatin1Char('{') + id + QLatin1Char('}') << user << false;
        QTest::newRow("without dashes") << QString(id).remove(QLatin1Char('-')) << user << false;
        QTest::newRow("URN form") << QStringLiteral("urn:uuid:") + id << user << false;
        QTest::newRow("trailing space") << id + QLatin1Char(' ') << user << false;
        QTest::newRow("empty") << QString() << user << false;
        QTest::newRow("non-hex digit") << QString(id).replace(0, 1, QLatin1Char('g')) << user << false;
        QTest::newRow("lower case") << id << user << true;
        QTest::newRow("upper case") << id.toUpper() << user.toLower() << true;
    }

    void shouldLeaveOutListElementsWhoseIdentifiersDoNotRead()
    {
        QFETCH(QString, prjId);
        QFETCH(QString, prjUserId);
        QFETCH(bool, kept);
        const QUuid user = owner;
        m_backend->tasks.seed(TasksBackend::Resource::projects,
            projectJson(upper(QUuid::createUuid()), upper(user), QStringLiteral("First")));
        m_backend->tasks.seed(TasksBackend::Resource::projects, projectJson(prjId, prjUserId, QStringLiteral("Odd")));
        m_backend->tasks.seed(TasksBackend::Resource::projects,
            projectJson(upper(QUuid::createUuid()), upper(user), QStringLiteral("Last")));

        const TaskResultEntity outcome = m_repository->list(user);

        verifySucceeded(outcome);
        const QStringList expected = kept
            ? QStringList {QStringLiteral("First"), QStringLiteral("Odd"), QStringLiteral("Last")}
            : QStringList {QStringLiteral("First"), QStringLiteral("Last")};
        QCOMPARE(namesOf(outcome), expected);
    }

    void shouldRefuseASingleProjectWithAnUnreadableIdentifier()
    {
        // The backend stored the project; only its answer is unusable.
        m_backend->http.enqueue(
            FakeResponse::json(
                201, projectJson(upper(QUuid::createUuid()), QStringLiteral("abc"), QStringLiteral("A"))),
            "POST");
        verifyRemoteFailure(m_repository->create(aProject(QStringLiteral("A"))), badId);

        const QString seeded = m_backend->tasks.seed(TasksBackend::Resource::projects,
            projectJson(upper(QUuid::createUuid()), QStringLiteral("x"), QStringLiteral("B")));
        verifyRemoteFailure(m_repository->find(QUuid::fromString(seeded)), badId);

        m_backend->http.enqueue(
            FakeResponse::json(200, projectJson(QStringLiteral("x"), upper(owner), QStringLiteral("C"))), "PUT");
        verifyRemoteFailure(m_repository->update(aProject(QStringLiteral("C"))), badId);
    }

    void shouldReportBackendFailuresWithTheirTexts_data()
    {
        QTest::addColumn<FakeResponse>("response");
        QTest::addColumn<QString>("message");
        QTest::newRow("404") << FakeResponse::text(404, "nothing here") << notFound;
        QTest::newRow("500") << FakeResponse::text(500, "boom") << QStringLiteral("error del servidor (500)");
        QTest::newRow("409") << FakeResponse::empty(409) << QStringLiteral("error del servidor (409)");
        QTest::newRow("401") << FakeResponse::text(401, "expired") << QStringLiteral("no autorizado");
        QTest::newRow("403 keeps the body")
            << FakeResponse::text(403, "cuenta suspendida") << QStringLiteral("cuenta suspendida");
        QTest::newRow("400 keeps the body")
            << FakeResponse::text(400, "prjName vacío") << QStringLiteral("prjName vacío");
        QTest::newRow("400 with a body that is not UTF-8") << FakeResponse::text(400, "\xff\xfe") << QString();
        const QJsonObject missingName {{QStringLiteral("prjId"), upper(QUuid::createUuid())}};
        QTest::newRow("200 that is no project")
            << FakeResponse::json(200, missingName) << decodingTextOf(QJsonDocument(missingName).toJson());
    }

    void shouldReportBackendFailuresWithTheirTexts()
    {
        QFETCH(FakeResponse, response);
        QFETCH(QString, message);
        m_backend->http.enqueue(response);

        verifyRemoteFailure(m_repository->find(QUuid::createUuid()), message);
    }

    void shouldSayNotAuthorizedWhenTheBackendRefusesTheToken()
    {
        RemoteProjectRepositoryImpl stranger(m_backend->client(QStringLiteral("someone-elses-token")));
        verifyRemoteFailure(stranger.list(owner), QStringLiteral("no autorizado"));
    }

    void shouldSayProjectNotFoundOnEveryOperation()
    {
        const ProjectEntity project = aProject(QStringLiteral("Gone"));
        RemoteProjectRepositoryImpl& repository = *m_repository;
        verifyNotFoundOnEveryOperation(*m_backend,
            {{"create", [&] { return repository.create(project); }},
                {"update", [&] { return repository.update(project); }},
                {"delete", [&] { return repository.delete_(project.prjId); }},
                {"find", [&] { return repository.find(project.prjId); }},
                {"list", [&] { return repository.list(owner); }}},
            notFound);
        // And the backend's own 404, for a project it never had.
        verifyRemoteFailure(m_repository->delete_(project.prjId), notFound);
    }

    void shouldKeepEachUsersProjectsApart()
    {
        const QUuid otherUser = QUuid::createUuid();
        m_backend->http.acceptToken(QStringLiteral("other-token"), otherUser);
        RemoteProjectRepositoryImpl others(m_backend->client(QStringLiteral("other-token")));
        const ProjectEntity mine = *m_repository->create(aProject(QStringLiteral("Mine"))).dataAs<ProjectEntity>();

        QCOMPARE(namesOf(others.list(otherUser)), QStringList());
        verifyRemoteFailure(others.find(mine.prjId), notFound);
        QCOMPARE(namesOf(m_repository->list(owner)), QStringList {QStringLiteral("Mine")});
    }

private:
    static QString decodingTextOf(const QByteArray& body)
    {
        try {
            JSONCoding::decode<ProjectResponseDTO>(body);
        } catch (const DecodingError& error) {
            return error.localizedDescription();
        }
        return QStringLiteral("<decoded>");
    }
};

TOLVANE_TEST_MAIN(RemoteProjectRepositoryTest)
#include "RemoteProjectRepositoryTest.moc"
