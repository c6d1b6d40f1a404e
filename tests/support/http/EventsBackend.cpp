#include "support/http/EventsBackend.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMutex>

#include <map>

namespace {

const QString path = QStringLiteral("/v0/events");
const QStringList bodyKeys = {QStringLiteral("evtTitle"), QStringLiteral("evtSchedule"),
    QStringLiteral("evtDurationMinutes"), QStringLiteral("evtHasAlarm"), QStringLiteral("evtDescription"),
    QStringLiteral("evtRepeat"), QStringLiteral("evtCustomRepeat")};

// Why a body is refused; empty when it is fine.
QByteArray refusal(const QByteArray& body, QJsonObject* out)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return "the body is not a JSON object";
    const QJsonObject object = document.object();
    if (object.keys().size() != bodyKeys.size())
        return "the body must carry exactly the event's keys";
    for (const QString& key : bodyKeys) {
        const QJsonValue value = object.value(key);
        const bool fits = key == QLatin1String("evtHasAlarm") ? value.isBool()
            : key == QLatin1String("evtDurationMinutes") ? value.isDouble() && value.toDouble() == value.toInteger()
            : key == QLatin1String("evtSchedule")
            ? value.isString() && QDateTime::fromString(value.toString(), Qt::ISODate).isValid()
            : value.isString();
        if (!fits)
            return "bad or missing \"" + key.toUtf8() + '"';
    }
    *out = object;
    return {};
}

QJsonObject response(QJsonObject stored)
{
    stored.remove(QStringLiteral("evtHasAlarm"));
    return stored;
}

} // namespace

struct EventsBackend::State {
    mutable QMutex mutex;
    std::map<QUuid, QList<QJsonObject>> events;

    qsizetype indexOf(const QUuid& userId, const QString& id)
    {
        const QList<QJsonObject>& list = events[userId];
        for (qsizetype i = 0; i < list.size(); ++i) {
            if (list.at(i).value(QStringLiteral("evtId")).toString().compare(id, Qt::CaseInsensitive) == 0)
                return i;
        }
        return -1;
    }
};

EventsBackend::EventsBackend(FakeBackend& backend)
    : m_state(std::make_shared<State>())
{
    const std::shared_ptr<State> state = m_state;
    backend.route("GET", path, [state](const RecordedRequest& request, const QStringList&) {
        const QMutexLocker locker(&state->mutex);
        QJsonArray list;
        for (const QJsonObject& event : state->events[request.userId])
            list.append(response(event));
        return FakeResponse::json(200, list);
    });
    backend.route("POST", path, [state](const RecordedRequest& request, const QStringList&) {
        QJsonObject event;
        if (const QByteArray why = refusal(request.body, &event); !why.isEmpty())
            return FakeResponse::text(400, why);
        event.insert(QStringLiteral("evtId"), QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
        const QMutexLocker locker(&state->mutex);
        state->events[request.userId].append(event);
        return FakeResponse::json(201, response(event));
    });
    backend.route(
        "PUT", path + QStringLiteral("/{id}"), [state](const RecordedRequest& request, const QStringList& id) {
            QJsonObject event;
            if (const QByteArray why = refusal(request.body, &event); !why.isEmpty())
                return FakeResponse::text(400, why);
            const QMutexLocker locker(&state->mutex);
            const qsizetype index = state->indexOf(request.userId, id.at(0));
            if (index < 0)
                return FakeResponse::text(404, "not found");
            event.insert(
                QStringLiteral("evtId"), state->events[request.userId].at(index).value(QStringLiteral("evtId")));
            state->events[request.userId][index] = event;
            return FakeResponse::json(200, response(event));
        });
    backend.route(
        "DELETE", path + QStringLiteral("/{id}"), [state](const RecordedRequest& request, const QStringList& id) {
            const QMutexLocker locker(&state->mutex);
            const qsizetype index = state->indexOf(request.userId, id.at(0));
            if (index < 0)
                return FakeResponse::text(404, "not found");
            state->events[request.userId].removeAt(index);
            return FakeResponse::empty(204);
        });
}

QString EventsBackend::seed(QJsonObject event, const QUuid& userId)
{
    if (!event.contains(QStringLiteral("evtId")))
        event.insert(QStringLiteral("evtId"), QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
    const QMutexLocker locker(&m_state->mutex);
    m_state->events[userId].append(event);
    return event.value(QStringLiteral("evtId")).toString();
}

QList<QJsonObject> EventsBackend::events(const QUuid& userId) const
{
    const QMutexLocker locker(&m_state->mutex);
    return m_state->events[userId];
}
