#pragma once

#include "support/http/FakeBackend.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QUuid>

#include <memory>
#include <optional>

// The backend's projects, task lists, tasks, daily tasks and bitácora entries, installed on a
// FakeBackend and kept in memory per user (the user of each request's bearer token), so remote
// repositories and screens in Google mode can run against something that behaves like the real
// service:
//
//     FakeBackend backend;
//     TasksBackend tasks(backend);
//     ... run the code under test against backend.baseURL() ...
//     QCOMPARE(tasks.records(TasksBackend::Resource::projects).size(), 1);
//
// Every resource answers POST <collection> (201, the new record with an identifier of the
// backend's making), PUT, GET and DELETE <collection>/{id} (200, 200, 204) and GET <collection>
// (200, an array in the order the records were made). Records are JSON objects in the response
// form; identifiers are upper-case UUIDs. An identifier in the path that is not a UUID or names
// no record of the user is 404. A body that is not a JSON object, lacks a key, has a key of the
// wrong type or one the resource does not know, is 400 with a plain-text reason; so is a create
// that names a parent (project, task list) the user does not have. Beyond that:
// - GET /v0/task-lists and /v0/bitacora-entries need the query item "projectId", GET /v0/tasks
//   "taskListId", GET /v0/daily-tasks "date" ("yyyy-MM-dd", matched against the UTC day of each
//   item's tasDate); a missing or malformed one is 400. GET /v0/projects takes none.
// - PATCH /v0/daily-tasks/{id}/toggle flips tasIsDone and answers the item.
// - DELETE /v0/task-lists/{id}/completed-tasks wants the body {"confirm": true} and removes the
//   list's done tasks (204).
// - A new task is not done; a new daily task is not done; a new bitácora entry's author is the
//   token's user. PUT replaces what its body carries: a task's due date and tag absent from the
//   body are cleared.
// - Deleting a project or a task list leaves what hangs off it alone, as the app deletes those
//   first.
//
// Faults (status codes, broken bodies, delays) are scripted with FakeBackend::enqueue, which
// answers ahead of these routes. The routes keep their state alive on their own, so this object
// may go before or after the FakeBackend.
class TasksBackend {
public:
    enum class Resource { projects, taskLists, tasks, dailyTasks, bitacoraEntries };

    explicit TasksBackend(FakeBackend& backend);

    // Stores record for userId exactly as given, after the user's other records of the resource,
    // and returns its identifier member; a record without one gets a fresh upper-case UUID. No
    // check is made, so a test can plant what the real backend would never send ("prjId": "x").
    QString seed(Resource resource, QJsonObject record, const QUuid& userId = FakeBackend::defaultUserId());

    // The user's records in the order the backend keeps them.
    QList<QJsonObject> records(Resource resource, const QUuid& userId = FakeBackend::defaultUserId()) const;
    // The user's record with that identifier (any letter case), if there is one.
    std::optional<QJsonObject> record(
        Resource resource, const QString& id, const QUuid& userId = FakeBackend::defaultUserId()) const;

    struct State;

private:
    std::shared_ptr<State> m_state;
};
