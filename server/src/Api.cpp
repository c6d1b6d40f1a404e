#include "Api.h"

#include "Log.h"
#include "wire/JSONCoding.h"
#include "wire/events/EventRequestDTO.h"
#include "wire/events/EventResponseDTO.h"
#include "wire/login/SupportDTOs.h"
#include "wire/login/UserDTOs.h"
#include "wire/tasks/BitacoraEntryResponseDTO.h"
#include "wire/tasks/CreateBitacoraEntryRequestDTO.h"
#include "wire/tasks/CreateDailyTaskRequestDTO.h"
#include "wire/tasks/CreateProjectRequestDTO.h"
#include "wire/tasks/CreateTaskListRequestDTO.h"
#include "wire/tasks/CreateTaskRequestDTO.h"
#include "wire/tasks/DailyTaskResponseDTO.h"
#include "wire/tasks/DeleteCompletedTasksRequestDTO.h"
#include "wire/tasks/ProjectResponseDTO.h"
#include "wire/tasks/TaskListResponseDTO.h"
#include "wire/tasks/TaskResponseDTO.h"
#include "wire/tasks/UpdateBitacoraEntryRequestDTO.h"
#include "wire/tasks/UpdateDailyTaskRequestDTO.h"
#include "wire/tasks/UpdateProjectRequestDTO.h"
#include "wire/tasks/UpdateTaskListRequestDTO.h"
#include "wire/tasks/UpdateTaskRequestDTO.h"

#include <QDate>
#include <QStringList>
#include <QUrl>
#include <QUrlQuery>
#include <QUuid>

#include <limits>

namespace {

// A refused request; the reason is for the caller and carries no user content.
struct Refusal {
    int status;
    std::string reason;
};

// Everything a handler needs: the caller, the path's segments after "/v0", the query, the body.
struct Call {
    pqxx::transaction_base& db;
    const std::string& user;
    const std::string& method;
    QStringList segments;
    QUrlQuery query;
    const std::string& body;
};

// The bodies are the shapes in src/wire, the app's own definitions: what the app writes is read
// here with the same code, and what is written here the app reads with the same code.
template <typename Shape> ApiResponse json(int status, const Shape& shape)
{
    return {status, JSONCoding::encode(shape)};
}

template <typename Shape> ApiResponse json(const std::vector<Shape>& shapes)
{
    JSONWriter out;
    out.reserve(shapes.size() * 192 + 2);
    out.beginArray();
    for (const Shape& shape : shapes)
        shape.writeJson(out);
    out.endArray();
    return {200, std::move(out).text()};
}

// A body that is not the shape's JSON, misses a key, has a key of the wrong type or one the shape
// does not know is refused before anything is written.
template <typename Shape> Shape body(const Call& call)
{
    try {
        return JSONCoding::decode<Shape>(QByteArray::fromRawData(call.body.data(), qsizetype(call.body.size())));
    } catch (const DecodingError& error) {
        throw Refusal {400, "the body does not fit: " + error.localizedDescription().toStdString()};
    }
}

ApiResponse noContent()
{
    return {204, {}, {}};
}

ApiResponse text(int status, const std::string& reason)
{
    return {status, reason + '\n', "text/plain; charset=utf-8"};
}

// The canonical lower-case form PostgreSQL takes, or nothing when text is not a UUID.
std::optional<std::string> uuid(const QString& text)
{
    if (text.size() != 36)
        return std::nullopt;
    const QUuid parsed = QUuid::fromString(text);
    if (parsed.isNull() && text != QLatin1String("00000000-0000-0000-0000-000000000000"))
        return std::nullopt;
    return parsed.toString(QUuid::WithoutBraces).toStdString();
}

// An identifier in a body that has to name something.
std::string uuidField(const QString& text, const char* key)
{
    const auto id = uuid(text);
    if (!id)
        throw Refusal {400, std::string("\"") + key + "\" is not an identifier"};
    return *id;
}

// The identifier in the path, refused as not found when it is not a UUID: nothing has that id.
std::string pathId(const Call& call, int index)
{
    const auto id = uuid(call.segments.value(index));
    if (!id)
        throw Refusal {404, "not found"};
    return *id;
}

std::string queryUuid(const Call& call, const char* name)
{
    const auto id = uuid(call.query.queryItemValue(QLatin1String(name), QUrl::FullyDecoded));
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

// Names and titles must not be blank.
std::string name(const QString& value, const char* key)
{
    if (value.trimmed().isEmpty())
        throw Refusal {400, std::string("\"") + key + "\" is blank"};
    return value.toStdString();
}

qint64 seconds(const QDateTime& date)
{
    return date.toSecsSinceEpoch();
}

QString qs(const pqxx::field& field)
{
    return QString::fromUtf8(field.c_str(), qsizetype(field.size()));
}

// What the client reads: the upper-case form, written straight from the stored text.
QString uuidOut(const pqxx::field& field)
{
    QString out(qsizetype(field.size()), Qt::Uninitialized);
    QChar* to = out.data();
    for (const char c : std::string_view(field.c_str(), field.size()))
        *to++ = QLatin1Char(c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c);
    return out;
}

QDateTime dateOut(const pqxx::field& field)
{
    return QDateTime::fromSecsSinceEpoch(field.as<qint64>(), Qt::UTC);
}

std::optional<QDateTime> optionalDateOut(const pqxx::field& field)
{
    if (field.is_null())
        return std::nullopt;
    return dateOut(field);
}

template <typename Shape> std::vector<Shape> rows(const pqxx::result& result, Shape (*shape)(const pqxx::row&))
{
    std::vector<Shape> shapes;
    shapes.reserve(std::size_t(result.size()));
    for (const auto& row : result)
        shapes.push_back(shape(row));
    return shapes;
}

// ---- projects

const char* projectColumns = "project_id, user_id, name, description, show_every_day";

ProjectResponseDTO project(const pqxx::row& row)
{
    return {uuidOut(row[0]), uuidOut(row[1]), qs(row[2]), qs(row[3]), row[4].as<bool>()};
}

// The body names the owner; it has to be the caller, since nobody writes into another's account.
void requireCaller(const Call& call, const std::string& owner)
{
    if (owner != call.user)
        throw Refusal {400, "the record names another user"};
}

// The identifier a create asked for, or a new one. Identifiers are unique across users too, so
// that a record brought back by an undo or a move between accounts is the same record everywhere:
// one already in use, by anyone, is refused.
std::string newId(
    Call& call, const std::optional<QString>& requested, const char* table, const char* column, const char* key)
{
    if (!requested)
        return call.db.exec1("SELECT gen_random_uuid()")[0].as<std::string>();
    const std::string id = uuidField(*requested, key);
    if (!call.db.exec_params(std::string("SELECT 1 FROM ") + table + " WHERE " + column + " = $1", id).empty())
        throw Refusal {409, std::string("\"") + key + "\" is already in use"};
    return id;
}

ApiResponse projects(Call& call)
{
    const auto one = std::string("SELECT ") + projectColumns + " FROM projects WHERE user_id = $1 AND project_id = $2";
    if (call.segments.size() == 1 && call.method == "GET") {
        return json(rows(call.db.exec_params(std::string("SELECT ") + projectColumns
                                 + " FROM projects WHERE user_id = $1 ORDER BY position",
                             call.user),
            project));
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const auto request = body<CreateProjectRequestDTO>(call);
        requireCaller(call, uuidField(request.prjUserId, "prjUserId"));
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO projects (user_id, project_id, name, description, show_every_day) "
                        "VALUES ($1, $5::uuid, $2, $3, $4) RETURNING ")
                + projectColumns,
            call.user, name(request.prjName, "prjName"), str(request.prjDescription), request.prjShowEveryDay,
            newId(call, request.prjId, "projects", "project_id", "prjId"));
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
        const auto request = body<UpdateProjectRequestDTO>(call);
        const auto result
            = call.db.exec_params(std::string("UPDATE projects SET name = $3, description = $4, show_every_day = $5 "
                                              "WHERE user_id = $1 AND project_id = $2 RETURNING ")
                    + projectColumns,
                call.user, id, name(request.prjName, "prjName"), str(request.prjDescription), request.prjShowEveryDay);
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

TaskListResponseDTO taskList(const pqxx::row& row)
{
    return {uuidOut(row[0]), uuidOut(row[1]), qs(row[2]), qs(row[3]), row[4].as<bool>()};
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
    if (!body<DeleteCompletedTasksRequestDTO>(call).confirm)
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
        return json(rows(call.db.exec_params(std::string("SELECT ") + listColumns
                                 + " FROM task_lists WHERE user_id = $1 AND project_id = $2 ORDER BY position",
                             call.user, projectId),
            taskList));
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const auto request = body<CreateTaskListRequestDTO>(call);
        const std::string projectId = uuidField(request.prjId, "prjId");
        const std::string listName = name(request.talName, "talName");
        const std::string description = str(request.talDescription);
        const bool isDefault = request.talIsDefault;
        if (call.db
                .exec_params(
                    "SELECT 1 FROM projects WHERE user_id = $1 AND project_id = $2 FOR UPDATE", call.user, projectId)
                .empty())
            throw Refusal {400, "\"prjId\" names no project of the user"};
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO task_lists (user_id, list_id, project_id, name, description, is_default) "
                        "VALUES ($1, $6::uuid, $2, $3, $4, $5) RETURNING ")
                + listColumns,
            call.user, projectId, listName, description, isDefault,
            newId(call, request.talId, "task_lists", "list_id", "talId"));
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
        const auto request = body<UpdateTaskListRequestDTO>(call);
        const bool isDefault = request.talIsDefault;
        const auto result
            = call.db.exec_params(std::string("UPDATE task_lists SET name = $3, description = $4, is_default = $5 "
                                              "WHERE user_id = $1 AND list_id = $2 RETURNING ")
                    + listColumns,
                call.user, id, name(request.talName, "talName"), str(request.talDescription), isDefault);
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
                          "eisenhower_tag, due_has_time, recurrence, occurrence, reminder_minutes_before, "
                          "extract(epoch FROM completed_at)::bigint";

const QStringList tags = {QStringLiteral("urgent_important"), QStringLiteral("not_urgent_important"),
    QStringLiteral("urgent_not_important"), QStringLiteral("not_urgent_not_important")};

// Tasks are what lists are made of and the most read shape: one answer object is filled row
// after row, so the identifiers' storage is reused and the tags share the constants' text, and
// a long list costs one allocation per title rather than five per row.
void fillUuid(QString& out, const pqxx::field& field)
{
    out.resize(qsizetype(field.size()));
    QChar* to = out.data();
    for (const char c : std::string_view(field.c_str(), field.size()))
        *to++ = QLatin1Char(c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c);
}

void fillTask(TaskResponseDTO& task, const pqxx::row& row)
{
    fillUuid(task.tasId, row[0]);
    fillUuid(task.prjId, row[1]);
    fillUuid(task.talId, row[2]);
    task.tasTitle = qs(row[3]);
    task.tasIsDone = row[4].as<bool>();
    task.tasDueDate = optionalDateOut(row[5]);
    task.tasEisenhowerTag.reset();
    if (!row[6].is_null()) {
        const QLatin1StringView stored(row[6].c_str(), qsizetype(row[6].size()));
        const auto known = std::find(tags.begin(), tags.end(), stored);
        task.tasEisenhowerTag = known != tags.end() ? *known : qs(row[6]);
    }
    task.tasDueHasTime = row[7].as<bool>();
    task.tasRecurrence.reset();
    if (!row[8].is_null())
        task.tasRecurrence
            = TaskRecurrenceDTO::fromJson(JSONCoding::parse(QByteArray(row[8].c_str(), qsizetype(row[8].size()))));
    task.tasOccurrence = row[9].as<qint64>();
    task.tasReminderMinutesBefore.reset();
    if (!row[10].is_null())
        task.tasReminderMinutesBefore = row[10].as<qint64>();
    task.tasCompletedAt = optionalDateOut(row[11]);
}

TaskResponseDTO task(const pqxx::row& row)
{
    TaskResponseDTO task;
    fillTask(task, row);
    return task;
}

// The optional tag as stored: absent, or one of the four API strings.
std::optional<std::string> tagOf(const std::optional<QString>& tag)
{
    if (!tag)
        return std::nullopt;
    if (!tags.contains(*tag))
        throw Refusal {400, "wrong value for \"tasEisenhowerTag\""};
    return tag->toStdString();
}

const char* orNull(const std::optional<std::string>& value)
{
    return value ? value->c_str() : nullptr;
}

std::optional<std::string> dateParam(const std::optional<QDateTime>& date)
{
    return date ? std::optional(std::to_string(seconds(*date))) : std::nullopt;
}

// The fields of a task's schedule as the columns keep them; the rule was checked when its body
// was read.
struct TaskSchedule {
    bool dueHasTime = false;
    std::optional<std::string> recurrence;
    qint64 occurrence = 1;
    std::optional<std::string> reminder;
    std::optional<std::string> completedAt;
};

template <typename Request> TaskSchedule scheduleOf(const Request& request)
{
    TaskSchedule schedule;
    schedule.dueHasTime = request.tasDueDate && request.tasDueHasTime;
    if (request.tasRecurrence) {
        JSONWriter out;
        request.tasRecurrence->writeJson(out);
        schedule.recurrence = std::move(out).text();
    }
    schedule.occurrence = request.tasOccurrence.value_or(1);
    if (schedule.occurrence < 1 || schedule.occurrence > std::numeric_limits<int>::max())
        throw Refusal {400, "wrong value for \"tasOccurrence\""};
    if (request.tasReminderMinutesBefore) {
        if (*request.tasReminderMinutesBefore < 0 || *request.tasReminderMinutesBefore > 366 * 24 * 60)
            throw Refusal {400, "wrong value for \"tasReminderMinutesBefore\""};
        schedule.reminder = std::to_string(*request.tasReminderMinutesBefore);
    }
    schedule.completedAt = dateParam(request.tasCompletedAt);
    return schedule;
}

// An instant in a query item, written as the bodies write dates.
qint64 queryInstant(const Call& call, const char* name)
{
    try {
        return seconds(JSONCoding::decodeDate(call.query.queryItemValue(QLatin1String(name), QUrl::FullyDecoded)));
    } catch (const DecodingError&) {
        throw Refusal {400, std::string("missing or malformed query item ") + name};
    }
}

// The tasks across all of the user's lists that the query items ask for: the open ones due
// before "dueBefore", or the done ones completed from "completedFrom" until before "completedTo".
pqxx::result tasksByDay(Call& call)
{
    if (call.query.hasQueryItem(QStringLiteral("dueBefore"))) {
        return call.db.exec_params(std::string("SELECT ") + taskColumns
                + " FROM tasks WHERE user_id = $1 AND NOT is_done AND due_date < to_timestamp($2::bigint) "
                  "ORDER BY due_date, position",
            call.user, queryInstant(call, "dueBefore"));
    }
    return call.db.exec_params(std::string("SELECT ") + taskColumns
            + " FROM tasks WHERE user_id = $1 AND is_done AND completed_at >= to_timestamp($2::bigint) "
              "AND completed_at < to_timestamp($3::bigint) ORDER BY completed_at, position",
        call.user, queryInstant(call, "completedFrom"), queryInstant(call, "completedTo"));
}

ApiResponse tasks(Call& call)
{
    if (call.segments.size() == 1 && call.method == "GET") {
        const bool byDay = call.query.hasQueryItem(QStringLiteral("dueBefore"))
            || call.query.hasQueryItem(QStringLiteral("completedFrom"));
        const auto result = byDay ? tasksByDay(call)
                                  : call.db.exec_params(std::string("SELECT ") + taskColumns
                                          + " FROM tasks WHERE user_id = $1 AND list_id = $2 ORDER BY position",
                                      call.user, queryUuid(call, "taskListId"));
        JSONWriter out;
        out.reserve(std::size_t(result.size()) * 256 + 2);
        out.beginArray();
        TaskResponseDTO shape;
        for (const auto& row : result) {
            fillTask(shape, row);
            shape.writeJson(out);
        }
        out.endArray();
        return {200, std::move(out).text()};
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const auto request = body<CreateTaskRequestDTO>(call);
        const std::string projectId = uuidField(request.prjId, "prjId");
        const std::string listId = uuidField(request.talId, "talId");
        const std::string title = name(request.tasTitle, "tasTitle");
        const auto due = dateParam(request.tasDueDate);
        const auto tag = tagOf(request.tasEisenhowerTag);
        const TaskSchedule schedule = scheduleOf(request);
        const auto parent = call.db.exec_params(
            "SELECT project_id FROM task_lists WHERE user_id = $1 AND list_id = $2 FOR SHARE", call.user, listId);
        if (parent.empty())
            throw Refusal {400, "\"talId\" names no task list of the user"};
        if (parent[0][0].as<std::string>() != projectId)
            throw Refusal {400, "\"prjId\" is not the project of the task list"};
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO tasks (user_id, task_id, project_id, list_id, title, due_date, eisenhower_tag, "
                        "due_has_time, recurrence, occurrence, reminder_minutes_before, completed_at) "
                        "VALUES ($1, $12::uuid, $2, $3, $4, to_timestamp($5::bigint), $6, "
                        "$7, $8, $9, $10::integer, to_timestamp($11::bigint)) RETURNING ")
                + taskColumns,
            call.user, projectId, listId, title, orNull(due), orNull(tag), schedule.dueHasTime,
            orNull(schedule.recurrence), schedule.occurrence, orNull(schedule.reminder), orNull(schedule.completedAt),
            newId(call, request.tasId, "tasks", "task_id", "tasId"));
        return json(201, task(row));
    }
    if (call.segments.size() != 2)
        throw Refusal {404, "no such resource"};
    const std::string id = pathId(call, 1);
    if (call.method == "GET") {
        const auto result = call.db.exec_params(
            std::string("SELECT ") + taskColumns + " FROM tasks WHERE user_id = $1 AND task_id = $2", call.user, id);
        requireOne(result);
        return json(200, task(result[0]));
    }
    if (call.method == "PUT") {
        const auto request = body<UpdateTaskRequestDTO>(call);
        const std::string title = name(request.tasTitle, "tasTitle");
        const bool done = request.tasIsDone;
        const auto due = dateParam(request.tasDueDate);
        const auto tag = tagOf(request.tasEisenhowerTag);
        const TaskSchedule schedule = scheduleOf(request);
        const auto result = call.db.exec_params(
            std::string("UPDATE tasks SET title = $3, is_done = $4, due_date = to_timestamp($5::bigint), "
                        "eisenhower_tag = $6, due_has_time = $7, recurrence = $8, occurrence = $9, "
                        "reminder_minutes_before = $10::integer, completed_at = to_timestamp($11::bigint) "
                        "WHERE user_id = $1 AND task_id = $2 RETURNING ")
                + taskColumns,
            call.user, id, title, done, orNull(due), orNull(tag), schedule.dueHasTime, orNull(schedule.recurrence),
            schedule.occurrence, orNull(schedule.reminder), orNull(schedule.completedAt));
        requireOne(result);
        return json(200, task(result[0]));
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

DailyTaskResponseDTO dailyTask(const pqxx::row& row)
{
    return {uuidOut(row[0]), uuidOut(row[1]), dateOut(row[2]), qs(row[3]), row[4].as<bool>()};
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
        return json(rows(call.db.exec_params(std::string("SELECT ") + dailyColumns
                                 + " FROM daily_tasks WHERE user_id = $1 AND day >= to_timestamp($2::bigint) "
                                   "AND day < to_timestamp($3::bigint) ORDER BY position",
                             call.user, start, start + 86400),
            dailyTask));
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const auto request = body<CreateDailyTaskRequestDTO>(call);
        requireCaller(call, uuidField(request.tasUserId, "tasUserId"));
        const qint64 day = seconds(request.tasDate);
        const auto row
            = call.db.exec_params1(std::string("INSERT INTO daily_tasks (user_id, daily_task_id, day, title) "
                                               "VALUES ($1, $4::uuid, to_timestamp($2::bigint), $3) RETURNING ")
                    + dailyColumns,
                call.user, day, name(request.tasTitle, "tasTitle"),
                newId(call, request.tasId, "daily_tasks", "daily_task_id", "tasId"));
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
        const auto request = body<UpdateDailyTaskRequestDTO>(call);
        const auto result = call.db.exec_params(
            std::string("UPDATE daily_tasks SET title = $3 WHERE user_id = $1 AND daily_task_id = $2 RETURNING ")
                + dailyColumns,
            call.user, id, name(request.tasTitle, "tasTitle"));
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

BitacoraEntryResponseDTO entry(const pqxx::row& row)
{
    return {uuidOut(row[0]), uuidOut(row[1]), uuidOut(row[2]), dateOut(row[3]), qs(row[4])};
}

ApiResponse bitacoraEntries(Call& call)
{
    if (call.segments.size() == 1 && call.method == "GET") {
        const std::string projectId = queryUuid(call, "projectId");
        return json(rows(call.db.exec_params(std::string("SELECT ") + entryColumns
                                 + " FROM bitacora_entries WHERE user_id = $1 AND project_id = $2 ORDER BY position",
                             call.user, projectId),
            entry));
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const auto request = body<CreateBitacoraEntryRequestDTO>(call);
        const std::string projectId = uuidField(request.prjId, "prjId");
        const qint64 date = seconds(request.bteDate);
        const std::string content = str(request.bteContent);
        if (call.db
                .exec_params(
                    "SELECT 1 FROM projects WHERE user_id = $1 AND project_id = $2 FOR SHARE", call.user, projectId)
                .empty())
            throw Refusal {400, "\"prjId\" names no project of the user"};
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO bitacora_entries (user_id, entry_id, project_id, entry_date, content) "
                        "VALUES ($1, $5::uuid, $2, to_timestamp($3::bigint), $4) RETURNING ")
                + entryColumns,
            call.user, projectId, date, content, newId(call, request.bteId, "bitacora_entries", "entry_id", "bteId"));
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
        const auto request = body<UpdateBitacoraEntryRequestDTO>(call);
        const auto result = call.db.exec_params(
            std::string("UPDATE bitacora_entries SET content = $3 WHERE user_id = $1 AND entry_id = $2 RETURNING ")
                + entryColumns,
            call.user, id, str(request.bteContent));
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

EventResponseDTO event(const pqxx::row& row)
{
    return {uuidOut(row[0]), qs(row[1]), dateOut(row[2]), row[3].as<qint64>(), qs(row[4]), qs(row[5]), qs(row[6])};
}

struct EventFields {
    std::string title;
    qint64 schedule;
    qint64 duration;
    bool hasAlarm;
    std::string description;
    std::string repeat;
    std::string customRepeat;
    std::optional<QString> id;
};

EventFields eventFields(const Call& call)
{
    const auto request = body<EventRequestDTO>(call);
    // A day and a half of minutes is plenty; the bound keeps the column's arithmetic far from overflow.
    if (request.evtDurationMinutes < 0 || request.evtDurationMinutes > 1000000)
        throw Refusal {400, "\"evtDurationMinutes\" is out of range"};
    return {str(request.evtTitle), seconds(request.evtSchedule), request.evtDurationMinutes, request.evtHasAlarm,
        str(request.evtDescription), str(request.evtRepeat), str(request.evtCustomRepeat), request.evtId};
}

ApiResponse events(Call& call)
{
    if (call.segments.size() == 1 && call.method == "GET") {
        return json(rows(
            call.db.exec_params(
                std::string("SELECT ") + eventColumns + " FROM events WHERE user_id = $1 ORDER BY position", call.user),
            event));
    }
    if (call.segments.size() == 1 && call.method == "POST") {
        const EventFields fields = eventFields(call);
        const auto row = call.db.exec_params1(
            std::string("INSERT INTO events (user_id, event_id, title, schedule, duration_minutes, has_alarm, "
                        "description, repeat, custom_repeat) VALUES ($1, $9::uuid, $2, "
                        "to_timestamp($3::bigint), $4, $5, $6, $7, $8) RETURNING ")
                + eventColumns,
            call.user, fields.title, fields.schedule, fields.duration, fields.hasAlarm, fields.description,
            fields.repeat, fields.customRepeat, newId(call, fields.id, "events", "event_id", "evtId"));
        return json(201, event(row));
    }
    if (call.segments.size() != 2)
        throw Refusal {404, "no such resource"};
    const std::string id = pathId(call, 1);
    if (call.method == "GET") {
        const auto result = call.db.exec_params(
            std::string("SELECT ") + eventColumns + " FROM events WHERE user_id = $1 AND event_id = $2", call.user, id);
        requireOne(result);
        return json(200, event(result[0]));
    }
    if (call.method == "PUT") {
        const EventFields fields = eventFields(call);
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

UserResponseDTO user(const pqxx::row& row)
{
    return {uuidOut(row[0]), qs(row[1]), qs(row[2]), qs(row[3]), true};
}

ApiResponse users(Call& call)
{
    const auto profile = [&] {
        const auto request = body<UserProfileRequestDTO>(call);
        return std::tuple {str(request.usrFirstName), str(request.usrLastName), str(request.usrEmail)};
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
    const std::string message = name(body<SupportRequestDTO>(call).supMessage, "supMessage");
    const auto row = call.db.exec_params1("INSERT INTO support_messages (user_id, message_id, message) "
                                          "VALUES ($1, gen_random_uuid(), $2) "
                                          "RETURNING message_id, user_id, extract(epoch FROM sent_at)::bigint, message",
        call.user, message);
    return json(201,
        SupportResponseDTO {uuidOut(row[0]), uuidOut(row[1]), QStringLiteral("support"), dateOut(row[2]), qs(row[3])});
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
        if (path == QLatin1String("/v0/health") && request.method == "GET") {
            JSONWriter out;
            out.beginObject().key("status").string(std::string_view("ok"));
            out.key("version").string(std::string_view(TOLVANE_VERSION)).endObject();
            return {200, std::move(out).text()};
        }

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
