#include "Api.h"

#include "Log.h"
#include "Wire.h"

#include <QDate>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>
#include <QUrl>
#include <QUrlQuery>

#include <cctype>
#include <cstdio>

using wire::Refusal;

namespace {

// Everything a handler needs: the caller, the path's segments after "/v0", the query, the body.
struct Call {
    pqxx::transaction_base& db;
    const std::string& user;
    const std::string& method;
    QStringList segments;
    QUrlQuery query;
    const std::string& body;
};

ApiResponse json(int status, const QJsonObject& object)
{
    return {status, wire::encode(object).toStdString()};
}

ApiResponse json(const QJsonArray& array)
{
    return {200, QJsonDocument(array).toJson(QJsonDocument::Compact).toStdString()};
}

ApiResponse noContent()
{
    return {204, {}, {}};
}

ApiResponse text(int status, const std::string& reason)
{
    return {status, reason + '\n', "text/plain; charset=utf-8"};
}

// The identifier in the path, refused as not found when it is not a UUID: nothing has that id.
std::string pathId(const Call& call, int index)
{
    const auto id = wire::uuid(call.segments.value(index));
    if (!id)
        throw Refusal {404, "not found"};
    return *id;
}

std::string queryUuid(const Call& call, const char* name)
{
    const auto id = wire::uuid(call.query.queryItemValue(QLatin1String(name), QUrl::FullyDecoded));
    if (!id)
        throw Refusal {400, std::string("missing or malformed query item ") + name};
    return *id;
}

void requireOne(const pqxx::result& result)
{
    if (result.empty())
        throw Refusal {404, "not found"};
}

std::string str(const QString& value)
{
    return value.toStdString();
}

QString qs(const pqxx::field& field)
{
    return QString::fromStdString(field.as<std::string>());
}

// ---- projects

const char* projectColumns = "project_id, user_id, name, description, show_every_day";

QJsonObject project(const pqxx::row& row)
{
    return {{QStringLiteral("prjId"), wire::uuidOut(row[0].as<std::string>())},
        {QStringLiteral("prjUserId"), wire::uuidOut(row[1].as<std::string>())}, {QStringLiteral("prjName"), qs(row[2])},
        {QStringLiteral("prjDescription"), qs(row[3])}, {QStringLiteral("prjShowEveryDay"), row[4].as<bool>()}};
}

// The body names the owner; it has to be the caller, since nobody writes into another's account.
void requireCaller(const Call& call, const std::string& owner)
{
    if (owner != call.user)
        throw Refusal {400, "the record names another user"};
}

ApiResponse projects(Call& call)
{
    const auto one = std::string("SELECT ") + projectColumns + " FROM projects WHERE user_id = $1 AND project_id = $2";
    if (call.segments.size() == 1 && call.method == "GET") {
        QJsonArray list;
        for (const auto& row : call.db.exec_params(
                 std::string("SELECT ") + projectColumns + " FROM projects WHERE user_id = $1 ORDER BY position",
                 call.user))
            list.append(project(row));
        return json(list);
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const QJsonObject body = wire::object(call.body, {"prjUserId", "prjName", "prjDescription", "prjShowEveryDay"});
        requireCaller(call, wire::uuidField(body, "prjUserId"));
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO projects (user_id, project_id, name, description, show_every_day) "
                        "VALUES ($1, gen_random_uuid(), $2, $3, $4) RETURNING ")
                + projectColumns,
            call.user, str(wire::name(body, "prjName")), str(wire::text(body, "prjDescription")),
            wire::flag(body, "prjShowEveryDay"));
        return json(201, project(row));
    }
    if (call.segments.size() != 2)
        throw Refusal {404, "no such resource"};
    const std::string id = pathId(call, 1);
    if (call.method == "GET") {
        const auto result = call.db.exec_params(one, call.user, id);
        requireOne(result);
        return json(200, project(result[0]));
    }
    if (call.method == "PUT") {
        const QJsonObject body = wire::object(call.body, {"prjName", "prjDescription", "prjShowEveryDay"});
        const auto result
            = call.db.exec_params(std::string("UPDATE projects SET name = $3, description = $4, show_every_day = $5 "
                                              "WHERE user_id = $1 AND project_id = $2 RETURNING ")
                    + projectColumns,
                call.user, id, str(wire::name(body, "prjName")), str(wire::text(body, "prjDescription")),
                wire::flag(body, "prjShowEveryDay"));
        requireOne(result);
        return json(200, project(result[0]));
    }
    if (call.method == "DELETE") {
        requireOne(call.db.exec_params(
            "SELECT 1 FROM projects WHERE user_id = $1 AND project_id = $2 FOR UPDATE", call.user, id));
        if (!call.db
                 .exec_params("SELECT 1 FROM task_lists WHERE user_id = $1 AND project_id = $2 LIMIT 1", call.user, id)
                 .empty())
            throw Refusal {409, "the project still has task lists"};
        call.db.exec_params("DELETE FROM projects WHERE user_id = $1 AND project_id = $2", call.user, id);
        return noContent();
    }
    throw Refusal {405, "method not allowed"};
}

// ---- task lists

const char* listColumns = "list_id, project_id, name, description, is_default";

QJsonObject taskList(const pqxx::row& row)
{
    return {{QStringLiteral("talId"), wire::uuidOut(row[0].as<std::string>())},
        {QStringLiteral("prjId"), wire::uuidOut(row[1].as<std::string>())}, {QStringLiteral("talName"), qs(row[2])},
        {QStringLiteral("talDescription"), qs(row[3])}, {QStringLiteral("talIsDefault"), row[4].as<bool>()}};
}

// A project has one default list at most: making one the default takes the flag from the others.
void clearOtherDefaults(Call& call, const std::string& projectId, const std::string& listId)
{
    call.db.exec_params("UPDATE task_lists SET is_default = false "
                        "WHERE user_id = $1 AND project_id = $2 AND list_id <> $3 AND is_default",
        call.user, projectId, listId);
}

ApiResponse deleteCompleted(Call& call)
{
    const std::string id = pathId(call, 1);
    requireOne(call.db.exec_params("SELECT 1 FROM task_lists WHERE user_id = $1 AND list_id = $2", call.user, id));
    const QJsonObject body = wire::object(call.body, {"confirm"});
    if (!wire::flag(body, "confirm"))
        throw Refusal {400, "the deletion was not confirmed"};
    call.db.exec_params("DELETE FROM tasks WHERE user_id = $1 AND list_id = $2 AND is_done", call.user, id);
    return noContent();
}

ApiResponse taskLists(Call& call)
{
    if (call.segments.size() == 3 && call.segments.at(2) == QLatin1String("completed-tasks") && call.method == "DELETE")
        return deleteCompleted(call);
    if (call.segments.size() == 1 && call.method == "GET") {
        const std::string projectId = queryUuid(call, "projectId");
        QJsonArray list;
        for (const auto& row : call.db.exec_params(std::string("SELECT ") + listColumns
                     + " FROM task_lists WHERE user_id = $1 AND project_id = $2 ORDER BY position",
                 call.user, projectId))
            list.append(taskList(row));
        return json(list);
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const QJsonObject body = wire::object(call.body, {"prjId", "talName", "talDescription", "talIsDefault"});
        const std::string projectId = wire::uuidField(body, "prjId");
        const std::string name = str(wire::name(body, "talName"));
        const std::string description = str(wire::text(body, "talDescription"));
        const bool isDefault = wire::flag(body, "talIsDefault");
        if (call.db
                .exec_params(
                    "SELECT 1 FROM projects WHERE user_id = $1 AND project_id = $2 FOR UPDATE", call.user, projectId)
                .empty())
            throw Refusal {400, "\"prjId\" names no project of the user"};
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO task_lists (user_id, list_id, project_id, name, description, is_default) "
                        "VALUES ($1, gen_random_uuid(), $2, $3, $4, $5) RETURNING ")
                + listColumns,
            call.user, projectId, name, description, isDefault);
        if (isDefault)
            clearOtherDefaults(call, projectId, row[0].as<std::string>());
        return json(201, taskList(row));
    }
    if (call.segments.size() != 2)
        throw Refusal {404, "no such resource"};
    const std::string id = pathId(call, 1);
    if (call.method == "GET") {
        const auto result = call.db.exec_params(
            std::string("SELECT ") + listColumns + " FROM task_lists WHERE user_id = $1 AND list_id = $2", call.user,
            id);
        requireOne(result);
        return json(200, taskList(result[0]));
    }
    if (call.method == "PUT") {
        const QJsonObject body = wire::object(call.body, {"talName", "talDescription", "talIsDefault"});
        const bool isDefault = wire::flag(body, "talIsDefault");
        const auto result
            = call.db.exec_params(std::string("UPDATE task_lists SET name = $3, description = $4, is_default = $5 "
                                              "WHERE user_id = $1 AND list_id = $2 RETURNING ")
                    + listColumns,
                call.user, id, str(wire::name(body, "talName")), str(wire::text(body, "talDescription")), isDefault);
        requireOne(result);
        if (isDefault)
            clearOtherDefaults(call, result[0][1].as<std::string>(), id);
        return json(200, taskList(result[0]));
    }
    if (call.method == "DELETE") {
        // The list's tasks go with it; nothing else can reach them.
        requireOne(call.db.exec_params(
            "DELETE FROM task_lists WHERE user_id = $1 AND list_id = $2 RETURNING 1", call.user, id));
        return noContent();
    }
    throw Refusal {405, "method not allowed"};
}

// ---- tasks

const char* taskColumns = "task_id, project_id, list_id, title, is_done, extract(epoch FROM due_date)::bigint, "
                          "eisenhower_tag";

const QStringList tags = {QStringLiteral("urgent_important"), QStringLiteral("not_urgent_important"),
    QStringLiteral("urgent_not_important"), QStringLiteral("not_urgent_not_important")};

// Tasks are what lists are made of and the most read shape, so they are written straight into
// the answer instead of going through QJsonObject, which costs more than the query itself.
void appendString(std::string& out, std::string_view text)
{
    out += '"';
    for (const char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", unsigned(static_cast<unsigned char>(c)));
                out += escaped;
            } else {
                out += c;
            }
        }
    }
    out += '"';
}

void appendUuid(std::string& out, const pqxx::field& field)
{
    out += '"';
    for (const char c : std::string_view(field.c_str(), field.size()))
        out += char(std::toupper(static_cast<unsigned char>(c)));
    out += '"';
}

void appendTask(std::string& out, const pqxx::row& row)
{
    out += "{\"tasId\":";
    appendUuid(out, row[0]);
    out += ",\"prjId\":";
    appendUuid(out, row[1]);
    out += ",\"talId\":";
    appendUuid(out, row[2]);
    out += ",\"tasTitle\":";
    appendString(out, std::string_view(row[3].c_str(), row[3].size()));
    out += row[4].as<bool>() ? ",\"tasIsDone\":true" : ",\"tasIsDone\":false";
    out += ",\"tasDueDate\":";
    if (row[5].is_null())
        out += "null";
    else
        appendString(out, wire::dateText(row[5].as<qint64>()));
    out += ",\"tasEisenhowerTag\":";
    if (row[6].is_null())
        out += "null";
    else
        appendString(out, std::string_view(row[6].c_str(), row[6].size()));
    out += '}';
}

ApiResponse task(int status, const pqxx::row& row)
{
    ApiResponse response {status, {}};
    appendTask(response.body, row);
    return response;
}

// The optional tag as stored: absent, or one of the four API strings.
std::optional<std::string> tagOf(const QJsonObject& body)
{
    const QJsonValue value = body.value(QLatin1String("tasEisenhowerTag"));
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    if (!tags.contains(value.toString()) || !value.isString())
        throw Refusal {400, "wrong value for \"tasEisenhowerTag\""};
    return value.toString().toStdString();
}

const char* orNull(const std::optional<std::string>& value)
{
    return value ? value->c_str() : nullptr;
}

std::optional<std::string> dateParam(const std::optional<qint64>& seconds)
{
    return seconds ? std::optional(std::to_string(*seconds)) : std::nullopt;
}

ApiResponse tasks(Call& call)
{
    if (call.segments.size() == 1 && call.method == "GET") {
        const std::string listId = queryUuid(call, "taskListId");
        const auto rows = call.db.exec_params(
            std::string("SELECT ") + taskColumns + " FROM tasks WHERE user_id = $1 AND list_id = $2 ORDER BY position",
            call.user, listId);
        ApiResponse response {200, "["};
        response.body.reserve(rows.size() * 256 + 2);
        for (const auto& row : rows) {
            if (response.body.size() > 1)
                response.body += ',';
            appendTask(response.body, row);
        }
        response.body += ']';
        return response;
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const QJsonObject body
            = wire::object(call.body, {"prjId", "talId", "tasTitle", "tasDueDate", "tasEisenhowerTag"});
        const std::string projectId = wire::uuidField(body, "prjId");
        const std::string listId = wire::uuidField(body, "talId");
        const std::string title = str(wire::name(body, "tasTitle"));
        const auto due = dateParam(wire::optionalDate(body, "tasDueDate"));
        const auto tag = tagOf(body);
        const auto parent = call.db.exec_params(
            "SELECT project_id FROM task_lists WHERE user_id = $1 AND list_id = $2 FOR SHARE", call.user, listId);
        if (parent.empty())
            throw Refusal {400, "\"talId\" names no task list of the user"};
        if (parent[0][0].as<std::string>() != projectId)
            throw Refusal {400, "\"prjId\" is not the project of the task list"};
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO tasks (user_id, task_id, project_id, list_id, title, due_date, eisenhower_tag) "
                        "VALUES ($1, gen_random_uuid(), $2, $3, $4, to_timestamp($5::bigint), $6) RETURNING ")
                + taskColumns,
            call.user, projectId, listId, title, orNull(due), orNull(tag));
        return task(201, row);
    }
    if (call.segments.size() != 2)
        throw Refusal {404, "no such resource"};
    const std::string id = pathId(call, 1);
    if (call.method == "GET") {
        const auto result = call.db.exec_params(
            std::string("SELECT ") + taskColumns + " FROM tasks WHERE user_id = $1 AND task_id = $2", call.user, id);
        requireOne(result);
        return task(200, result[0]);
    }
    if (call.method == "PUT") {
        const QJsonObject body = wire::object(call.body, {"tasTitle", "tasIsDone", "tasDueDate", "tasEisenhowerTag"});
        const std::string title = str(wire::name(body, "tasTitle"));
        const bool done = wire::flag(body, "tasIsDone");
        const auto due = dateParam(wire::optionalDate(body, "tasDueDate"));
        const auto tag = tagOf(body);
        const auto result = call.db.exec_params(
            std::string("UPDATE tasks SET title = $3, is_done = $4, due_date = to_timestamp($5::bigint), "
                        "eisenhower_tag = $6 WHERE user_id = $1 AND task_id = $2 RETURNING ")
                + taskColumns,
            call.user, id, title, done, orNull(due), orNull(tag));
        requireOne(result);
        return task(200, result[0]);
    }
    if (call.method == "DELETE") {
        requireOne(
            call.db.exec_params("DELETE FROM tasks WHERE user_id = $1 AND task_id = $2 RETURNING 1", call.user, id));
        return noContent();
    }
    throw Refusal {405, "method not allowed"};
}

// ---- daily tasks

const char* dailyColumns = "daily_task_id, user_id, extract(epoch FROM day)::bigint, title, is_done";

QJsonObject dailyTask(const pqxx::row& row)
{
    return {{QStringLiteral("tasId"), wire::uuidOut(row[0].as<std::string>())},
        {QStringLiteral("tasUserId"), wire::uuidOut(row[1].as<std::string>())},
        {QStringLiteral("tasDate"), wire::dateOut(row[2].as<qint64>())}, {QStringLiteral("tasTitle"), qs(row[3])},
        {QStringLiteral("tasIsDone"), row[4].as<bool>()}};
}

ApiResponse dailyTasks(Call& call)
{
    if (call.segments.size() == 1 && call.method == "GET") {
        // The UTC calendar day, as the client sends it.
        const QString text = call.query.queryItemValue(QStringLiteral("date"), QUrl::FullyDecoded);
        const QDate day = QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
        if (text.size() != 10 || !day.isValid())
            throw Refusal {400, "missing or malformed query item date"};
        const qint64 start = day.startOfDay(Qt::UTC).toSecsSinceEpoch();
        QJsonArray list;
        for (const auto& row : call.db.exec_params(std::string("SELECT ") + dailyColumns
                     + " FROM daily_tasks WHERE user_id = $1 AND day >= to_timestamp($2::bigint) "
                       "AND day < to_timestamp($3::bigint) ORDER BY position",
                 call.user, start, start + 86400))
            list.append(dailyTask(row));
        return json(list);
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const QJsonObject body = wire::object(call.body, {"tasUserId", "tasDate", "tasTitle"});
        requireCaller(call, wire::uuidField(body, "tasUserId"));
        const qint64 day = wire::date(body, "tasDate");
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO daily_tasks (user_id, daily_task_id, day, title) "
                        "VALUES ($1, gen_random_uuid(), to_timestamp($2::bigint), $3) RETURNING ")
                + dailyColumns,
            call.user, day, str(wire::name(body, "tasTitle")));
        return json(201, dailyTask(row));
    }
    if (call.segments.size() == 3 && call.segments.at(2) == QLatin1String("toggle") && call.method == "PATCH") {
        const auto result = call.db.exec_params(std::string("UPDATE daily_tasks SET is_done = NOT is_done "
                                                            "WHERE user_id = $1 AND daily_task_id = $2 RETURNING ")
                + dailyColumns,
            call.user, pathId(call, 1));
        requireOne(result);
        return json(200, dailyTask(result[0]));
    }
    if (call.segments.size() != 2)
        throw Refusal {404, "no such resource"};
    const std::string id = pathId(call, 1);
    if (call.method == "GET") {
        const auto result = call.db.exec_params(
            std::string("SELECT ") + dailyColumns + " FROM daily_tasks WHERE user_id = $1 AND daily_task_id = $2",
            call.user, id);
        requireOne(result);
        return json(200, dailyTask(result[0]));
    }
    if (call.method == "PUT") {
        const QJsonObject body = wire::object(call.body, {"tasTitle"});
        const auto result = call.db.exec_params(
            std::string("UPDATE daily_tasks SET title = $3 WHERE user_id = $1 AND daily_task_id = $2 RETURNING ")
                + dailyColumns,
            call.user, id, str(wire::name(body, "tasTitle")));
        requireOne(result);
        return json(200, dailyTask(result[0]));
    }
    if (call.method == "DELETE") {
        requireOne(call.db.exec_params(
            "DELETE FROM daily_tasks WHERE user_id = $1 AND daily_task_id = $2 RETURNING 1", call.user, id));
        return noContent();
    }
    throw Refusal {405, "method not allowed"};
}

// ---- bitácora entries

const char* entryColumns = "entry_id, user_id, project_id, extract(epoch FROM entry_date)::bigint, content";

QJsonObject entry(const pqxx::row& row)
{
    return {{QStringLiteral("bteId"), wire::uuidOut(row[0].as<std::string>())},
        {QStringLiteral("bteUserId"), wire::uuidOut(row[1].as<std::string>())},
        {QStringLiteral("prjId"), wire::uuidOut(row[2].as<std::string>())},
        {QStringLiteral("bteDate"), wire::dateOut(row[3].as<qint64>())}, {QStringLiteral("bteContent"), qs(row[4])}};
}

ApiResponse bitacoraEntries(Call& call)
{
    if (call.segments.size() == 1 && call.method == "GET") {
        const std::string projectId = queryUuid(call, "projectId");
        QJsonArray list;
        for (const auto& row : call.db.exec_params(std::string("SELECT ") + entryColumns
                     + " FROM bitacora_entries WHERE user_id = $1 AND project_id = $2 ORDER BY position",
                 call.user, projectId))
            list.append(entry(row));
        return json(list);
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const QJsonObject body = wire::object(call.body, {"prjId", "bteDate", "bteContent"});
        const std::string projectId = wire::uuidField(body, "prjId");
        const qint64 date = wire::date(body, "bteDate");
        const std::string content = str(wire::text(body, "bteContent"));
        if (call.db
                .exec_params(
                    "SELECT 1 FROM projects WHERE user_id = $1 AND project_id = $2 FOR SHARE", call.user, projectId)
                .empty())
            throw Refusal {400, "\"prjId\" names no project of the user"};
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO bitacora_entries (user_id, entry_id, project_id, entry_date, content) "
                        "VALUES ($1, gen_random_uuid(), $2, to_timestamp($3::bigint), $4) RETURNING ")
                + entryColumns,
            call.user, projectId, date, content);
        return json(201, entry(row));
    }
    if (call.segments.size() != 2)
        throw Refusal {404, "no such resource"};
    const std::string id = pathId(call, 1);
    if (call.method == "GET") {
        const auto result = call.db.exec_params(
            std::string("SELECT ") + entryColumns + " FROM bitacora_entries WHERE user_id = $1 AND entry_id = $2",
            call.user, id);
        requireOne(result);
        return json(200, entry(result[0]));
    }
    if (call.method == "PUT") {
        const QJsonObject body = wire::object(call.body, {"bteContent"});
        const auto result = call.db.exec_params(
            std::string("UPDATE bitacora_entries SET content = $3 WHERE user_id = $1 AND entry_id = $2 RETURNING ")
                + entryColumns,
            call.user, id, str(wire::text(body, "bteContent")));
        requireOne(result);
        return json(200, entry(result[0]));
    }
    if (call.method == "DELETE") {
        requireOne(call.db.exec_params(
            "DELETE FROM bitacora_entries WHERE user_id = $1 AND entry_id = $2 RETURNING 1", call.user, id));
        return noContent();
    }
    throw Refusal {405, "method not allowed"};
}

// ---- events

const char* eventColumns = "event_id, title, extract(epoch FROM schedule)::bigint, duration_minutes, description, "
                           "repeat, custom_repeat";

QJsonObject event(const pqxx::row& row)
{
    return {{QStringLiteral("evtId"), wire::uuidOut(row[0].as<std::string>())},
        {QStringLiteral("evtTitle"), qs(row[1])}, {QStringLiteral("evtSchedule"), wire::dateOut(row[2].as<qint64>())},
        {QStringLiteral("evtDurationMinutes"), row[3].as<int>()}, {QStringLiteral("evtDescription"), qs(row[4])},
        {QStringLiteral("evtRepeat"), qs(row[5])}, {QStringLiteral("evtCustomRepeat"), qs(row[6])}};
}

struct EventFields {
    std::string title;
    qint64 schedule;
    qint64 duration;
    bool hasAlarm;
    std::string description;
    std::string repeat;
    std::string customRepeat;
};

EventFields eventFields(const std::string& text)
{
    const QJsonObject body = wire::object(text,
        {"evtTitle", "evtSchedule", "evtDurationMinutes", "evtHasAlarm", "evtDescription", "evtRepeat",
            "evtCustomRepeat"});
    return {str(wire::text(body, "evtTitle")), wire::date(body, "evtSchedule"),
        wire::integer(body, "evtDurationMinutes"), wire::flag(body, "evtHasAlarm"),
        str(wire::text(body, "evtDescription")), str(wire::text(body, "evtRepeat")),
        str(wire::text(body, "evtCustomRepeat"))};
}

ApiResponse events(Call& call)
{
    if (call.segments.size() == 1 && call.method == "GET") {
        QJsonArray list;
        for (const auto& row :
            call.db.exec_params(
                std::string("SELECT ") + eventColumns + " FROM events WHERE user_id = $1 ORDER BY position", call.user))
            list.append(event(row));
        return json(list);
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const EventFields fields = eventFields(call.body);
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO events (user_id, event_id, title, schedule, duration_minutes, has_alarm, "
                        "description, repeat, custom_repeat) VALUES ($1, gen_random_uuid(), $2, "
                        "to_timestamp($3::bigint), $4, $5, $6, $7, $8) RETURNING ")
                + eventColumns,
            call.user, fields.title, fields.schedule, fields.duration, fields.hasAlarm, fields.description,
            fields.repeat, fields.customRepeat);
        return json(201, event(row));
    }
    if (call.segments.size() != 2)
        throw Refusal {404, "no such resource"};
    const std::string id = pathId(call, 1);
    if (call.method == "PUT") {
        const EventFields fields = eventFields(call.body);
        const auto result = call.db.exec_params(
            std::string("UPDATE events SET title = $3, schedule = to_timestamp($4::bigint), duration_minutes = $5, "
                        "has_alarm = $6, description = $7, repeat = $8, custom_repeat = $9 "
                        "WHERE user_id = $1 AND event_id = $2 RETURNING ")
                + eventColumns,
            call.user, id, fields.title, fields.schedule, fields.duration, fields.hasAlarm, fields.description,
            fields.repeat, fields.customRepeat);
        requireOne(result);
        return json(200, event(result[0]));
    }
    if (call.method == "DELETE") {
        requireOne(
            call.db.exec_params("DELETE FROM events WHERE user_id = $1 AND event_id = $2 RETURNING 1", call.user, id));
        return noContent();
    }
    throw Refusal {405, "method not allowed"};
}

// ---- users and support

QJsonObject user(const pqxx::row& row)
{
    return {{QStringLiteral("usrId"), wire::uuidOut(row[0].as<std::string>())},
        {QStringLiteral("usrFirstName"), qs(row[1])}, {QStringLiteral("usrLastName"), qs(row[2])},
        {QStringLiteral("usrEmail"), qs(row[3])}, {QStringLiteral("usrIsGoogleAccount"), true}};
}

ApiResponse users(Call& call)
{
    const auto profile = [&] {
        const QJsonObject body = wire::object(call.body, {"usrFirstName", "usrLastName", "usrEmail"});
        return std::tuple {str(wire::text(body, "usrFirstName")), str(wire::text(body, "usrLastName")),
            str(wire::text(body, "usrEmail"))};
    };
    if (call.segments.size() == 1 && call.method == "POST") {
        const auto [first, last, email] = profile();
        // Registering again (every sign-in does) answers the account as it stands.
        const auto existing = call.db.exec_params(
            "SELECT user_id, first_name, last_name, email FROM users WHERE user_id = $1", call.user);
        if (!existing.empty())
            return json(200, user(existing[0]));
        const auto row = call.db.exec_params1("INSERT INTO users (user_id, first_name, last_name, email) "
                                              "VALUES ($1, $2, $3, $4) RETURNING user_id, first_name, last_name, email",
            call.user, first, last, email);
        return json(201, user(row));
    }
    if (call.segments.size() == 2 && call.method == "PUT") {
        const std::string id = pathId(call, 1);
        if (id != call.user)
            throw Refusal {404, "not found"};
        const auto [first, last, email] = profile();
        const auto result
            = call.db.exec_params("UPDATE users SET first_name = $2, last_name = $3, email = $4 WHERE user_id = $1 "
                                  "RETURNING user_id, first_name, last_name, email",
                call.user, first, last, email);
        requireOne(result);
        return json(200, user(result[0]));
    }
    throw Refusal {404, "no such resource"};
}

ApiResponse support(Call& call)
{
    if (call.segments.size() != 1 || call.method != "POST")
        throw Refusal {404, "no such resource"};
    const QJsonObject body = wire::object(call.body, {"supMessage"});
    const std::string message = str(wire::name(body, "supMessage"));
    const auto row = call.db.exec_params1("INSERT INTO support_messages (user_id, message_id, message) "
                                          "VALUES ($1, gen_random_uuid(), $2) "
                                          "RETURNING message_id, user_id, extract(epoch FROM sent_at)::bigint, message",
        call.user, message);
    return json(201,
        {{QStringLiteral("supId"), wire::uuidOut(row[0].as<std::string>())},
            {QStringLiteral("supUserId"), wire::uuidOut(row[1].as<std::string>())},
            {QStringLiteral("supType"), QStringLiteral("support")},
            {QStringLiteral("supDate"), wire::dateOut(row[2].as<qint64>())},
            {QStringLiteral("supMessage"), qs(row[3])}});
}

} // namespace

Api::Api(ConnectionPool& pool, TokenVerifier& verifier)
    : m_pool(pool)
    , m_verifier(verifier)
{
}

std::string Api::userIdOf(const std::string& subject)
{
    {
        const std::lock_guard lock(m_usersMutex);
        if (const auto found = m_users.find(subject); found != m_users.end())
            return found->second;
    }
    auto connection = m_pool.acquire();
    pqxx::work db(*connection);
    db.exec_params("INSERT INTO identities (subject, user_id) VALUES ($1, gen_random_uuid()) "
                   "ON CONFLICT (subject) DO NOTHING",
        subject);
    const std::string userId
        = db.exec_params1("SELECT user_id FROM identities WHERE subject = $1", subject)[0].as<std::string>();
    db.commit();
    const std::lock_guard lock(m_usersMutex);
    // The mapping never changes once made, so keeping it cannot go stale.
    m_users.emplace(subject, userId);
    return userId;
}

ApiResponse Api::handle(const ApiRequest& request)
{
    try {
        const QUrl url(QStringLiteral("http://server") + QString::fromStdString(request.target));
        const QString path = url.path(QUrl::FullyDecoded);
        if (path == QLatin1String("/v0/health") && request.method == "GET")
            return json(200,
                {{QStringLiteral("status"), QStringLiteral("ok")},
                    {QStringLiteral("version"), QStringLiteral(TOLVANE_VERSION)}});

        const std::string_view bearer = "Bearer ";
        if (request.authorization.compare(0, bearer.size(), bearer) != 0)
            return text(401, "unauthorized");
        const auto subject = m_verifier.subject(
            std::string_view(request.authorization).substr(bearer.size()), std::chrono::system_clock::now());
        if (!subject)
            return text(401, "unauthorized");
        const std::string userId = userIdOf(*subject);

        QStringList segments = path.split(QLatin1Char('/'));
        if (segments.size() < 3 || !segments.at(0).isEmpty() || segments.at(1) != QLatin1String("v0"))
            return text(404, "no such resource");
        segments = segments.mid(2);
        const QString resource = segments.at(0);
        ApiResponse (*handler)(Call&) = nullptr;
        if (resource == QLatin1String("projects"))
            handler = projects;
        else if (resource == QLatin1String("task-lists"))
            handler = taskLists;
        else if (resource == QLatin1String("tasks"))
            handler = tasks;
        else if (resource == QLatin1String("daily-tasks"))
            handler = dailyTasks;
        else if (resource == QLatin1String("bitacora-entries"))
            handler = bitacoraEntries;
        else if (resource == QLatin1String("events"))
            handler = events;
        else if (resource == QLatin1String("users"))
            handler = users;
        else if (resource == QLatin1String("support"))
            handler = support;
        if (!handler)
            return text(404, "no such resource");

        // A pooled connection may have died with a database restart since its last use; nothing
        // was written through it then, so the request is tried once more on a fresh one.
        for (int attempt = 1;; ++attempt) {
            try {
                auto connection = m_pool.acquire();
                // A read is one statement, atomic on its own: no BEGIN and COMMIT round trips for it.
                std::unique_ptr<pqxx::transaction_base> db;
                if (request.method == "GET")
                    db = std::make_unique<pqxx::nontransaction>(*connection);
                else
                    db = std::make_unique<pqxx::work>(*connection);
                Call call {*db, userId, request.method, segments, QUrlQuery(url), request.body};
                ApiResponse response = handler(call);
                db->commit();
                return response;
            } catch (const pqxx::broken_connection&) {
                if (attempt == 2)
                    throw;
            }
        }
    } catch (const Refusal& refusal) {
        return text(refusal.status, refusal.reason);
    } catch (const pqxx::broken_connection&) {
        slog::error("lost the database connection");
        return text(503, "service unavailable");
    } catch (const std::exception& error) {
        // Database errors can quote values; log only their kind.
        slog::error(std::string("request failed: ") + typeid(error).name());
        return text(500, "internal error");
    }
}
