#include "RemoteRepositoryFixture.h"
#include "support/TestMain.h"

using namespace RemoteFixture;

Q_DECLARE_METATYPE(QJsonValue)

namespace QTest {
template <> char* toString(const APIError& error)
{
    return qstrdup(error.debugDescription().toUtf8().constData());
}
} // namespace QTest

namespace {

// What the backend answered a raw request, as the client saw it.
APIError refusalOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const APIError& error) {
        return error;
    }
    return APIError::transport(QStringLiteral("<answered 2xx>"));
}

} // namespace

// The fake backend refuses what the real one would, so screens tested against it cannot get away
// with bodies or queries the service would reject.
class TasksBackendTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Backend> m_backend;
    QString m_project;
    QString m_list;

private Q_SLOTS:
    void init()
    {
        m_backend = std::make_unique<Backend>();
        m_project = m_backend->tasks.seed(TasksBackend::Resource::projects,
            {{QStringLiteral("prjUserId"), upper(FakeBackend::defaultUserId())},
                {QStringLiteral("prjName"), QStringLiteral("Home")}, {QStringLiteral("prjDescription"), QString()},
                {QStringLiteral("prjShowEveryDay"), false}});
        m_list = m_backend->tasks.seed(TasksBackend::Resource::taskLists,
            {{QStringLiteral("prjId"), m_project}, {QStringLiteral("talName"), QStringLiteral("Inbox")},
                {QStringLiteral("talDescription"), QString()}, {QStringLiteral("talIsDefault"), true}});
    }

    void cleanup() { m_backend.reset(); }

    void shouldRefuseBodiesTheServiceWouldReject_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QJsonValue>("body");
        QTest::addColumn<QString>("reason");
        QTest::newRow("not an object") << QStringLiteral("/v0/projects") << QJsonValue(QJsonArray {})
                                       << QStringLiteral("the body is not a JSON object");
        QTest::newRow("missing key") << QStringLiteral("/v0/daily-tasks")
                                     << QJsonValue(QJsonObject {{QStringLiteral("tasTitle"), QStringLiteral("T")}})
                                     << QStringLiteral("missing \"tasUserId\"");
        QTest::newRow("a key the resource does not know")
            << QStringLiteral("/v0/bitacora-entries")
            << QJsonValue(QJsonObject {{QStringLiteral("bteUserId"), upper(QUuid::createUuid())}})
            << QStringLiteral("unknown key \"bteUserId\"");
        QTest::newRow("a number for a flag")
            << QStringLiteral("/v0/projects")
            << QJsonValue(QJsonObject {{QStringLiteral("prjUserId"), upper(QUuid())},
                   {QStringLiteral("prjName"), QStringLiteral("A")}, {QStringLiteral("prjDescription"), QString()},
                   {QStringLiteral("prjShowEveryDay"), 1}})
            << QStringLiteral("wrong value for \"prjShowEveryDay\"");
        QTest::newRow("a tag in the wrong case")
            << QStringLiteral("/v0/tasks")
            << QJsonValue(QJsonObject {{QStringLiteral("prjId"), upper(QUuid::createUuid())},
                   {QStringLiteral("talId"), QStringLiteral("<the list>")},
                   {QStringLiteral("tasTitle"), QStringLiteral("T")},
                   {QStringLiteral("tasEisenhowerTag"), QStringLiteral("URGENT_IMPORTANT")}})
            << QStringLiteral("wrong value for \"tasEisenhowerTag\"");
        QTest::newRow("a date without its zone")
            << QStringLiteral("/v0/daily-tasks")
            << QJsonValue(QJsonObject {{QStringLiteral("tasUserId"), upper(QUuid::createUuid())},
                   {QStringLiteral("tasDate"), QStringLiteral("2026-11-21T09:00:00")},
                   {QStringLiteral("tasTitle"), QStringLiteral("T")}})
            << QStringLiteral("wrong value for \"tasDate\"");
        QTest::newRow("a list of another user's project")
            << QStringLiteral("/v0/task-lists")
            << QJsonValue(QJsonObject {{QStringLiteral("prjId"), upper(QUuid::createUuid())},
                   {QStringLiteral("talName"), QStringLiteral("L")}, {QStringLiteral("talDescription"), QString()},
                   {QStringLiteral("talIsDefault"), false}})
            << QStringLiteral("\"prjId\" names no project of the user");
    }

    void shouldRefuseBodiesTheServiceWouldReject()
    {
        QFETCH(QString, path);
        QFETCH(QJsonValue, body);
        QFETCH(QString, reason);
        if (body[QStringLiteral("talId")] == QStringLiteral("<the list>")) {
            QJsonObject withList = body.toObject();
            withList.insert(QStringLiteral("talId"), m_list);
            body = withList;
        }
        const APIClient client = m_backend->client();

        QCOMPARE(refusalOf([&] { client.post<QJsonValue>(path, body); }), APIError::badRequest(reason));
        QCOMPARE(m_backend->tasks.records(TasksBackend::Resource::tasks).size(), 0);
        QCOMPARE(m_backend->tasks.records(TasksBackend::Resource::taskLists).size(), 1);
    }

    void shouldRefuseListQueriesWithoutTheirItem()
    {
        const APIClient client = m_backend->client();
        auto listing = [&](const QString& path, const QList<APIClient::QueryItem>& query) {
            return refusalOf([&] { client.get<QJsonArray>(path, query); });
        };
        QCOMPARE(listing(QStringLiteral("/v0/tasks"), {}),
            APIError::badRequest(QStringLiteral("missing query item taskListId")));
        QCOMPARE(listing(QStringLiteral("/v0/task-lists"), {{QStringLiteral("projectId"), QStringLiteral("home")}}),
            APIError::badRequest(QStringLiteral("malformed projectId")));
        QCOMPARE(listing(QStringLiteral("/v0/daily-tasks"),
                     {{QStringLiteral("date"), QStringLiteral("2026-11-21T00:00:00Z")}}),
            APIError::badRequest(QStringLiteral("malformed date")));
    }

    void shouldDeleteCompletedTasksOnlyWhenConfirmed()
    {
        m_backend->tasks.seed(TasksBackend::Resource::tasks,
            {{QStringLiteral("prjId"), m_project}, {QStringLiteral("talId"), m_list},
                {QStringLiteral("tasTitle"), QStringLiteral("Done")}, {QStringLiteral("tasIsDone"), true}});
        const APIClient client = m_backend->client();
        const QString path = QStringLiteral("/v0/task-lists/") + m_list + QStringLiteral("/completed-tasks");

        QCOMPARE(refusalOf([&] { client.delete_(path); }),
            APIError::badRequest(QStringLiteral("the body is not a JSON object")));
        QCOMPARE(refusalOf([&] {
            client.delete_(path, QJsonObject {{QStringLiteral("confirm"), false}});
        }),
            APIError::badRequest(QStringLiteral("the deletion was not confirmed")));
        QCOMPARE(m_backend->tasks.records(TasksBackend::Resource::tasks).size(), 1);
        QCOMPARE(refusalOf([&] {
            client.delete_(
                QStringLiteral("/v0/task-lists/") + upper(QUuid::createUuid()) + QStringLiteral("/completed-tasks"),
                QJsonObject {{QStringLiteral("confirm"), true}});
        }),
            APIError::notFound());
    }

    void shouldClearWhatATaskUpdateLeavesOut()
    {
        const QString id = m_backend->tasks.seed(TasksBackend::Resource::tasks,
            {{QStringLiteral("prjId"), m_project}, {QStringLiteral("talId"), m_list},
                {QStringLiteral("tasTitle"), QStringLiteral("T")}, {QStringLiteral("tasIsDone"), false},
                {QStringLiteral("tasDueDate"), QStringLiteral("2026-11-21T09:00:00Z")},
                {QStringLiteral("tasEisenhowerTag"), QStringLiteral("urgent_important")}});

        const QJsonValue answer = m_backend->client().put<QJsonValue>(QStringLiteral("/v0/tasks/") + id.toLower(),
            QJsonObject {{QStringLiteral("tasTitle"), QStringLiteral("U")}, {QStringLiteral("tasIsDone"), true},
                {QStringLiteral("tasDueDate"), QStringLiteral("2026-11-21T10:00:00+01:00")}});

        const QJsonObject expected {{QStringLiteral("tasId"), id}, {QStringLiteral("prjId"), m_project},
            {QStringLiteral("talId"), m_list}, {QStringLiteral("tasTitle"), QStringLiteral("U")},
            {QStringLiteral("tasIsDone"), true}, {QStringLiteral("tasDueDate"), QStringLiteral("2026-11-21T09:00:00Z")},
            {QStringLiteral("tasEisenhowerTag"), QJsonValue::Null}, {QStringLiteral("tasDueHasTime"), QJsonValue::Null},
            {QStringLiteral("tasRecurrence"), QJsonValue::Null}, {QStringLiteral("tasOccurrence"), QJsonValue::Null},
            {QStringLiteral("tasReminderMinutesBefore"), QJsonValue::Null},
            {QStringLiteral("tasCompletedAt"), QJsonValue::Null}};
        QCOMPARE(canonical(answer.toObject()), canonical(expected));
        QCOMPARE(canonical(*m_backend->tasks.record(TasksBackend::Resource::tasks, id)), canonical(expected));
    }
};

TOLVANE_TEST_MAIN(TasksBackendTest)
#include "TasksBackendTest.moc"
