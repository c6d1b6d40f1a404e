#include "RemoteRepositoryFixture.h"
#include "support/TestMain.h"
#include "tasks/repositories/remote/RemoteBitacoraRepositoryImpl.h"

using namespace RemoteFixture;

namespace {

const QUuid author = FakeBackend::defaultUserId();
const QString notFound = QStringLiteral("entrada de bitácora no encontrada");
const QString badId = QStringLiteral("el servidor devolvió una entrada de bitácora con un id inválido");
const QDateTime morning(QDate(2026, 11, 21), QTime(9, 0), Qt::UTC);

QStringList contentsOf(const TaskResultEntity& outcome)
{
    QStringList contents;
    if (const auto* entries = outcome.dataAs<QList<BitacoraEntryEntity>>()) {
        for (const BitacoraEntryEntity& entry : *entries)
            contents.append(entry.bteContent);
    }
    return contents;
}

} // namespace

class RemoteBitacoraRepositoryTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Backend> m_backend;
    std::unique_ptr<RemoteBitacoraRepositoryImpl> m_repository;
    QUuid m_project;

    QString seedEntry(const QString& content, const QJsonObject& overrides = {}) const
    {
        QJsonObject entry {{QStringLiteral("bteUserId"), upper(author)}, {QStringLiteral("prjId"), upper(m_project)},
            {QStringLiteral("bteDate"), QStringLiteral("2026-11-21T09:00:00Z")},
            {QStringLiteral("bteContent"), content}};
        for (auto it = overrides.begin(); it != overrides.end(); ++it)
            entry.insert(it.key(), it.value());
        return m_backend->tasks.seed(TasksBackend::Resource::bitacoraEntries, entry);
    }

private Q_SLOTS:
    void init()
    {
        m_backend = std::make_unique<Backend>();
        m_repository = std::make_unique<RemoteBitacoraRepositoryImpl>(m_backend->client());
        m_project = QUuid::fromString(m_backend->tasks.seed(TasksBackend::Resource::projects,
            {{QStringLiteral("prjUserId"), upper(author)}, {QStringLiteral("prjName"), QStringLiteral("Home")},
                {QStringLiteral("prjDescription"), QString()}, {QStringLiteral("prjShowEveryDay"), false}}));
    }

    void cleanup()
    {
        m_repository.reset();
        m_backend.reset();
    }

    void shouldLeaveTheAuthorToTheBackendAndSendOnlyTheTextOnUpdate()
    {
        // Whoever the entity names, the backend records the token's user.
        const BitacoraEntryEntity draft {.bteUserId = QUuid::createUuid(),
            .prjId = m_project,
            .bteDate = morning,
            .bteContent = QStringLiteral("Started the plan")};
        const TaskResultEntity created = m_repository->create(draft);
        verifySucceeded(created);
        const BitacoraEntryEntity entry = *created.dataAs<BitacoraEntryEntity>();
        QCOMPARE(entry.bteUserId, author);
        QCOMPARE(entry.prjId, m_project);
        QCOMPARE(entry.bteDate, morning);
        QCOMPARE(entry.bteContent, QStringLiteral("Started the plan"));

        BitacoraEntryEntity edited = entry;
        edited.bteContent = QString();
        QCOMPARE(*m_repository->update(edited).dataAs<BitacoraEntryEntity>(), edited);
        QCOMPARE(*m_repository->find(entry.bteId).dataAs<BitacoraEntryEntity>(), edited);
        verifySucceeded(m_repository->delete_(entry.bteId));

        const QString path = QStringLiteral("/v0/bitacora-entries/") + upper(entry.bteId);
        const QList<RecordedRequest> wire = m_backend->http.requests();
        QCOMPARE(wire.size(), 4);
        verifyRequest(wire.at(0), "POST", QStringLiteral("/v0/bitacora-entries"),
            QJsonObject {{QStringLiteral("prjId"), upper(m_project)}, {QStringLiteral("bteId"), upper(entry.bteId)},
                {QStringLiteral("bteDate"), QStringLiteral("2026-11-21T09:00:00Z")},
                {QStringLiteral("bteContent"), QStringLiteral("Started the plan")}});
        verifyRequest(wire.at(1), "PUT", path, QJsonObject {{QStringLiteral("bteContent"), QString()}});
        verifyRequest(wire.at(2), "GET", path);
        verifyRequest(wire.at(3), "DELETE", path);
    }

    void shouldListAProjectsEntriesWithoutTheUnreadableOnes()
    {
        seedEntry(QStringLiteral("Monday"));
        seedEntry(QStringLiteral("Malformed"), {{QStringLiteral("bteId"), QStringLiteral("entry-2")}});
        seedEntry(QStringLiteral("Other project"), {{QStringLiteral("prjId"), upper(QUuid::createUuid())}});
        seedEntry(QStringLiteral("No author"), {{QStringLiteral("bteUserId"), QString()}});
        seedEntry(QStringLiteral("Tuesday"));

        const TaskResultEntity outcome = m_repository->list(m_project);

        verifySucceeded(outcome);
        QCOMPARE(contentsOf(outcome), (QStringList {QStringLiteral("Monday"), QStringLiteral("Tuesday")}));
        verifyRequest(m_backend->http.requests().last(), "GET",
            QStringLiteral("/v0/bitacora-entries?projectId=") + upper(m_project));
    }

    void shouldRefuseASingleEntryWithAnUnreadableIdentifier()
    {
        const QString id = seedEntry(QStringLiteral("Odd"), {{QStringLiteral("prjId"), QStringLiteral("home")}});
        verifyRemoteFailure(m_repository->find(QUuid::fromString(id)), badId);
    }

    void shouldSayEntryNotFoundOnEveryOperation()
    {
        const BitacoraEntryEntity entry {
            .bteUserId = author, .prjId = m_project, .bteDate = morning, .bteContent = QStringLiteral("Gone")};
        RemoteBitacoraRepositoryImpl& repository = *m_repository;
        verifyNotFoundOnEveryOperation(*m_backend,
            {{"create", [&] { return repository.create(entry); }}, {"update", [&] { return repository.update(entry); }},
                {"delete", [&] { return repository.delete_(entry.bteId); }},
                {"find", [&] { return repository.find(entry.bteId); }},
                {"list", [&] { return repository.list(entry.prjId); }}},
            notFound);
        verifyRemoteFailure(m_repository->update(entry), notFound);
    }
};

TOLVANE_TEST_MAIN(RemoteBitacoraRepositoryTest)
#include "RemoteBitacoraRepositoryTest.moc"
