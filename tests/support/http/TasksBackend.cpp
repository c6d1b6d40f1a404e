#include "support/http/TasksBackend.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMutex>
#include <QRegularExpression>

#include <map>

namespace {

using Resource = TasksBackend::Resource;

// A refused request: thrown from deep inside a handler, answered by the route.
struct Refusal {
    int status;
    QByteArray reason;
};

enum class Kind {
    text,
    flag,
    date,
    uuid,
    tag,
    // A UUID that must name one of the user's projects, or task lists.
    project,
    taskList,
    // A whole number from 0 up.
    count,
    // A repetition rule: a JSON object with a "frequency".
    rule,
};

struct Field {
    QLatin1String key;
    Kind kind;
    bool optional = false;
};

// How GET <collection> picks the user's records.
struct ListQuery {
    enum class Match { all, sameUuid, utcDay };
    Match match = Match::all;
    QString name;
    QLatin1String member {""};
};

struct Collection {
    Resource resource;
    QString path;
    QLatin1String idKey;
    QList<Field> createFields;
    QList<Field> updateFields;
    ListQuery query;
    // Members a new record gets that its body does not carry, besides its identifier.
    QJsonObject createdDefaults;
    // The member that records the author, set from the bearer token; empty when the body says.
    QLatin1String authorKey {""};
};

// A task body's fields with the optional members of its schedule, in create and update alike.
QList<Field> withSchedule(QList<Field> fields)
{
    fields.append({{QLatin1String("tasDueHasTime"), Kind::flag, true},
        {QLatin1String("tasRecurrence"), Kind::rule, true}, {QLatin1String("tasOccurrence"), Kind::count, true},
        {QLatin1String("tasReminderMinutesBefore"), Kind::count, true},
        {QLatin1String("tasCompletedAt"), Kind::date, true}});
    return fields;
}

const QStringList tagValues = {QStringLiteral("urgent_important"), QStringLiteral("not_urgent_important"),
    QStringLiteral("urgent_not_important"), QStringLiteral("not_urgent_not_important")};

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QUuid> uuidOf(const QJsonValue& value)
{
    const QString text = value.toString();
    if (!value.isString() || text.size() != 36)
        return std::nullopt;
    const QUuid uuid = QUuid::fromString(text);
    if (uuid.isNull() && text != QLatin1String("00000000-0000-0000-0000-000000000000"))
        return std::nullopt;
    return uuid;
}

std::optional<QDateTime> dateOf(const QJsonValue& value)
{
    static const QRegularExpression iso(
        QStringLiteral("^\\d{4}-\\d{2}-\\d{2}T\\d{2}:\\d{2}:\\d{2}(\\.\\d+)?(Z|[+-]\\d{2}:?\\d{2})$"));
    const QString text = value.toString();
    if (!value.isString() || !iso.match(text).hasMatch())
        return std::nullopt;
    const QDateTime date = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!date.isValid())
        return std::nullopt;
    return date;
}

QString encodeDate(const QDateTime& date)
{
    return date.toUTC().toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss'Z'"));
}

QByteArray quoted(QLatin1String key)
{
    return '"' + QByteArray(key.data(), key.size()) + '"';
}

const QList<Collection>& collections()
{
    static const QList<Collection> all = {
        {Resource::projects, QStringLiteral("/v0/projects"), QLatin1String("prjId"),
            {{QLatin1String("prjUserId"), Kind::uuid}, {QLatin1String("prjName"), Kind::text},
                {QLatin1String("prjDescription"), Kind::text}, {QLatin1String("prjShowEveryDay"), Kind::flag}},
            {{QLatin1String("prjName"), Kind::text}, {QLatin1String("prjDescription"), Kind::text},
                {QLatin1String("prjShowEveryDay"), Kind::flag}},
            {}, {}},
        {Resource::taskLists, QStringLiteral("/v0/task-lists"), QLatin1String("talId"),
            {{QLatin1String("prjId"), Kind::project}, {QLatin1String("talName"), Kind::text},
                {QLatin1String("talDescription"), Kind::text}, {QLatin1String("talIsDefault"), Kind::flag}},
            {{QLatin1String("talName"), Kind::text}, {QLatin1String("talDescription"), Kind::text},
                {QLatin1String("talIsDefault"), Kind::flag}},
            {ListQuery::Match::sameUuid, QStringLiteral("projectId"), QLatin1String("prjId")}, {}},
        {Resource::tasks, QStringLiteral("/v0/tasks"), QLatin1String("tasId"),
            withSchedule({{QLatin1String("prjId"), Kind::uuid}, {QLatin1String("talId"), Kind::taskList},
                {QLatin1String("tasTitle"), Kind::text}, {QLatin1String("tasDueDate"), Kind::date, true},
                {QLatin1String("tasEisenhowerTag"), Kind::tag, true}}),
            withSchedule({{QLatin1String("tasTitle"), Kind::text}, {QLatin1String("tasIsDone"), Kind::flag},
                {QLatin1String("tasDueDate"), Kind::date, true}, {QLatin1String("tasEisenhowerTag"), Kind::tag, true}}),
            {ListQuery::Match::sameUuid, QStringLiteral("taskListId"), QLatin1String("talId")},
            {{QStringLiteral("tasIsDone"), false}}},
        {Resource::dailyTasks, QStringLiteral("/v0/daily-tasks"), QLatin1String("tasId"),
            {{QLatin1String("tasUserId"), Kind::uuid}, {QLatin1String("tasDate"), Kind::date},
                {QLatin1String("tasTitle"), Kind::text}},
            {{QLatin1String("tasTitle"), Kind::text}},
            {ListQuery::Match::utcDay, QStringLiteral("date"), QLatin1String("tasDate")},
            {{QStringLiteral("tasIsDone"), false}}},
        {Resource::bitacoraEntries, QStringLiteral("/v0/bitacora-entries"), QLatin1String("bteId"),
            {{QLatin1String("prjId"), Kind::project}, {QLatin1String("bteDate"), Kind::date},
                {QLatin1String("bteContent"), Kind::text}},
            {{QLatin1String("bteContent"), Kind::text}},
            {ListQuery::Match::sameUuid, QStringLiteral("projectId"), QLatin1String("prjId")}, {},
            QLatin1String("bteUserId")},
    };
    return all;
}

const Collection& collectionOf(Resource resource)
{
    for (const Collection& collection : collections()) {
        if (collection.resource == resource)
            return collection;
    }
    Q_UNREACHABLE();
}

} // namespace

struct TasksBackend::State {
    mutable QMutex mutex;
    std::map<std::pair<QUuid, Resource>, QList<QJsonObject>> records;

    QList<QJsonObject>& of(const QUuid& userId, Resource resource) { return records[{userId, resource}]; }

    // Where the user's record with that identifier is; identifiers that are not UUIDs match nothing.
    qsizetype indexOf(const QUuid& userId, Resource resource, const QString& id)
    {
        const std::optional<QUuid> wanted = uuidOf(id);
        const QList<QJsonObject>& list = of(userId, resource);
        for (qsizetype i = 0; wanted && i < list.size(); ++i) {
            if (uuidOf(list.at(i).value(collectionOf(resource).idKey)) == wanted)
                return i;
        }
        return -1;
    }

    QJsonObject& existing(const QUuid& userId, Resource resource, const QString& id)
    {
        const qsizetype index = indexOf(userId, resource, id);
        if (index < 0)
            throw Refusal {404, "not found"};
        return of(userId, resource)[index];
    }

    // The body's members checked against fields and brought to the stored form; optional
    // members that are absent come back as null.
    QJsonObject read(const RecordedRequest& request, const QList<Field>& fields)
    {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(request.body, &error);
        if (error.error != QJsonParseError::NoError || !document.isObject())
            throw Refusal {400, "the body is not a JSON object"};
        const QJsonObject body = document.object();
        for (auto it = body.begin(); it != body.end(); ++it) {
            const bool known
                = std::any_of(fields.begin(), fields.end(), [&](const Field& field) { return field.key == it.key(); });
            if (!known)
                throw Refusal {400, "unknown key \"" + it.key().toUtf8() + '"'};
        }
        QJsonObject stored;
        for (const Field& field : fields) {
            const QJsonValue value = body.value(field.key);
            if (value.isUndefined() || value.isNull()) {
                if (!field.optional)
                    throw Refusal {400, "missing " + quoted(field.key)};
                stored.insert(field.key, QJsonValue::Null);
                continue;
            }
            stored.insert(field.key, checked(field, value, request.userId));
        }
        return stored;
    }

    QJsonValue checked(const Field& field, const QJsonValue& value, const QUuid& userId)
    {
        const QByteArray wrong = "wrong value for " + quoted(field.key);
        switch (field.kind) {
        case Kind::text:
            if (!value.isString())
                throw Refusal {400, wrong};
            return value;
        case Kind::flag:
            if (!value.isBool())
                throw Refusal {400, wrong};
            return value;
        case Kind::date:
            if (const auto date = dateOf(value))
                return encodeDate(*date);
            throw Refusal {400, wrong};
        case Kind::tag:
            if (!tagValues.contains(value.toString()))
                throw Refusal {400, wrong};
            return value;
        case Kind::count:
            if (!value.isDouble() || value.toDouble() < 0 || value.toDouble() != double(value.toInteger()))
                throw Refusal {400, wrong};
            return value;
        case Kind::rule:
            if (!value.isObject() || !value.toObject().value(QLatin1String("frequency")).isString())
                throw Refusal {400, wrong};
            return value;
        case Kind::uuid:
        case Kind::project:
        case Kind::taskList:
            break;
        }
        const std::optional<QUuid> uuid = uuidOf(value);
        if (!uuid)
            throw Refusal {400, wrong};
        const QString id = uuid->toString(QUuid::WithoutBraces).toUpper();
        if (field.kind == Kind::project && indexOf(userId, Resource::projects, id) < 0)
            throw Refusal {400, quoted(field.key) + " names no project of the user"};
        if (field.kind == Kind::taskList && indexOf(userId, Resource::taskLists, id) < 0)
            throw Refusal {400, quoted(field.key) + " names no task list of the user"};
        return id;
    }

    QJsonArray listed(const Collection& collection, const RecordedRequest& request)
    {
        const ListQuery& query = collection.query;
        QString value;
        if (query.match != ListQuery::Match::all) {
            const auto items = request.queryItems();
            const auto item
                = std::find_if(items.begin(), items.end(), [&](const auto& pair) { return pair.first == query.name; });
            if (item == items.end())
                throw Refusal {400, "missing query item " + query.name.toUtf8()};
            value = item->second;
        }
        std::optional<QUuid> wantedId;
        QDate wantedDay;
        if (query.match == ListQuery::Match::sameUuid && !(wantedId = uuidOf(value)))
            throw Refusal {400, "malformed " + query.name.toUtf8()};
        if (query.match == ListQuery::Match::utcDay) {
            static const QRegularExpression day(QStringLiteral("^\\d{4}-\\d{2}-\\d{2}$"));
            wantedDay = QDate::fromString(value, Qt::ISODate);
            if (!day.match(value).hasMatch() || !wantedDay.isValid())
                throw Refusal {400, "malformed " + query.name.toUtf8()};
        }
        QJsonArray result;
        for (const QJsonObject& record : of(request.userId, collection.resource)) {
            const QJsonValue member = record.value(query.member);
            const bool wanted = query.match == ListQuery::Match::all
                || (query.match == ListQuery::Match::sameUuid && uuidOf(member) == wantedId)
                || (query.match == ListQuery::Match::utcDay && dateOf(member)
                    && dateOf(member)->toUTC().date() == wantedDay);
            if (wanted)
                result.append(record);
        }
        return result;
    }
};

namespace {

// Runs handler under the state's lock and turns a Refusal into its response.
template <typename Handler>
FakeBackend::RouteHandler guarded(std::shared_ptr<TasksBackend::State> state, Handler handler)
{
    return [state = std::move(state), handler](const RecordedRequest& request, const QStringList& captures) {
        const QMutexLocker locker(&state->mutex);
        try {
            return handler(*state, request, captures);
        } catch (const Refusal& refusal) {
            return FakeResponse::text(refusal.status, refusal.reason);
        }
    };
}

void install(FakeBackend& backend, const std::shared_ptr<TasksBackend::State>& state, const Collection& collection)
{
    const QString one = collection.path + QStringLiteral("/{id}");
    const Resource resource = collection.resource;

    backend.route("POST", collection.path,
        guarded(state, [&collection](TasksBackend::State& state, const RecordedRequest& request, const QStringList&) {
            // The client may choose the identifier; one already in use is refused.
            QList<Field> fields = collection.createFields;
            fields.append({collection.idKey, Kind::uuid, true});
            QJsonObject record = state.read(request, fields);
            const QJsonValue chosen = record.value(collection.idKey);
            if (chosen.isString()) {
                for (const QJsonObject& other : state.of(request.userId, collection.resource)) {
                    if (other.value(collection.idKey) == chosen)
                        throw Refusal {409, quoted(collection.idKey) + " is already in use"};
                }
            }
            for (auto it = collection.createdDefaults.begin(); it != collection.createdDefaults.end(); ++it)
                record.insert(it.key(), it.value());
            if (!collection.authorKey.isEmpty())
                record.insert(collection.authorKey, request.userId.toString(QUuid::WithoutBraces).toUpper());
            if (!chosen.isString())
                record.insert(collection.idKey, newId());
            state.of(request.userId, collection.resource).append(record);
            return FakeResponse::json(201, record);
        }));

    backend.route("PUT", one,
        guarded(state,
            [&collection](TasksBackend::State& state, const RecordedRequest& request, const QStringList& captures) {
                QJsonObject& record = state.existing(request.userId, collection.resource, captures.at(0));
                const QJsonObject changes = state.read(request, collection.updateFields);
                for (auto it = changes.begin(); it != changes.end(); ++it)
                    record.insert(it.key(), it.value());
                return FakeResponse::json(200, record);
            }));

    backend.route("GET", one,
        guarded(
            state, [resource](TasksBackend::State& state, const RecordedRequest& request, const QStringList& captures) {
                return FakeResponse::json(200, state.existing(request.userId, resource, captures.at(0)));
            }));

    backend.route("DELETE", one,
        guarded(
            state, [resource](TasksBackend::State& state, const RecordedRequest& request, const QStringList& captures) {
                const qsizetype index = state.indexOf(request.userId, resource, captures.at(0));
                if (index < 0)
                    throw Refusal {404, "not found"};
                state.of(request.userId, resource).removeAt(index);
                return FakeResponse::empty(204);
            }));

    backend.route("GET", collection.path,
        guarded(state, [&collection](TasksBackend::State& state, const RecordedRequest& request, const QStringList&) {
            return FakeResponse::json(200, state.listed(collection, request));
        }));
}

} // namespace

TasksBackend::TasksBackend(FakeBackend& backend)
    : m_state(std::make_shared<State>())
{
    for (const Collection& collection : collections())
        install(backend, m_state, collection);

    backend.route("PATCH", QStringLiteral("/v0/daily-tasks/{id}/toggle"),
        guarded(m_state, [](State& state, const RecordedRequest& request, const QStringList& captures) {
            QJsonObject& item = state.existing(request.userId, Resource::dailyTasks, captures.at(0));
            item.insert(QStringLiteral("tasIsDone"), !item.value(QStringLiteral("tasIsDone")).toBool());
            return FakeResponse::json(200, item);
        }));

    backend.route("DELETE", QStringLiteral("/v0/task-lists/{id}/completed-tasks"),
        guarded(m_state, [](State& state, const RecordedRequest& request, const QStringList& captures) {
            state.existing(request.userId, Resource::taskLists, captures.at(0));
            const QJsonObject body = state.read(request, {{QLatin1String("confirm"), Kind::flag}});
            if (!body.value(QStringLiteral("confirm")).toBool())
                throw Refusal {400, "the deletion was not confirmed"};
            const std::optional<QUuid> listId = uuidOf(captures.at(0));
            state.of(request.userId, Resource::tasks).removeIf([&](const QJsonObject& task) {
                return uuidOf(task.value(QStringLiteral("talId"))) == listId
                    && task.value(QStringLiteral("tasIsDone")).toBool();
            });
            return FakeResponse::empty(204);
        }));
}

QString TasksBackend::seed(Resource resource, QJsonObject record, const QUuid& userId)
{
    const QLatin1String idKey = collectionOf(resource).idKey;
    if (!record.contains(idKey))
        record.insert(idKey, newId());
    const QMutexLocker locker(&m_state->mutex);
    m_state->of(userId, resource).append(record);
    return record.value(idKey).toString();
}

QList<QJsonObject> TasksBackend::records(Resource resource, const QUuid& userId) const
{
    const QMutexLocker locker(&m_state->mutex);
    return m_state->of(userId, resource);
}

std::optional<QJsonObject> TasksBackend::record(Resource resource, const QString& id, const QUuid& userId) const
{
    const QMutexLocker locker(&m_state->mutex);
    const qsizetype index = m_state->indexOf(userId, resource, id);
    if (index < 0)
        return std::nullopt;
    return m_state->of(userId, resource).at(index);
}
