#include "transfer/TasksJsonFormat.h"

#include "tasks/entities/TaskRecurrenceCodec.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

QString uuid(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces);
}

QJsonValue time(const std::optional<QDateTime>& value)
{
    return value && value->isValid() ? QJsonValue(value->toUTC().toString(Qt::ISODateWithMs)) : QJsonValue();
}

struct Reader {
    QString error;

    QUuid id(const QJsonObject& object, const QString& key)
    {
        const QUuid value = QUuid::fromString(object.value(key).toString());
        if (value.isNull() && error.isEmpty())
            error = QStringLiteral("'%1' is not an identifier").arg(key);
        return value;
    }
    QUuid optionalId(const QJsonObject& object, const QString& key)
    {
        return QUuid::fromString(object.value(key).toString());
    }
    std::optional<QDateTime> time(const QJsonObject& object, const QString& key)
    {
        const QJsonValue value = object.value(key);
        if (value.isNull() || value.isUndefined())
            return std::nullopt;
        const QDateTime parsed = QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
        if (!parsed.isValid() && error.isEmpty())
            error = QStringLiteral("'%1' is not a time").arg(key);
        return parsed;
    }
    QDateTime requiredTime(const QJsonObject& object, const QString& key)
    {
        std::optional<QDateTime> value = time(object, key);
        if (!value && error.isEmpty())
            error = QStringLiteral("'%1' is missing").arg(key);
        return value.value_or(QDateTime());
    }
};

} // namespace

namespace TasksJsonFormat {

QByteArray write(const TasksSnapshot& snapshot)
{
    QJsonArray projects, taskLists, tasks, dailyTasks, bitacora;
    for (const ProjectEntity& p : snapshot.projects) {
        projects.append(
            QJsonObject {{QStringLiteral("prjId"), uuid(p.prjId)}, {QStringLiteral("prjUserId"), uuid(p.prjUserId)},
                {QStringLiteral("prjName"), p.prjName}, {QStringLiteral("prjDescription"), p.prjDescription},
                {QStringLiteral("prjShowEveryDay"), p.prjShowEveryDay}});
    }
    for (const TaskListEntity& l : snapshot.taskLists) {
        taskLists.append(QJsonObject {{QStringLiteral("talId"), uuid(l.talId)},
            {QStringLiteral("prjId"), uuid(l.prjId)}, {QStringLiteral("talName"), l.talName},
            {QStringLiteral("talDescription"), l.talDescription}, {QStringLiteral("talIsDefault"), l.talIsDefault}});
    }
    for (const TaskEntity& t : snapshot.tasks) {
        QJsonObject task {{QStringLiteral("tasId"), uuid(t.tasId)}, {QStringLiteral("prjId"), uuid(t.prjId)},
            {QStringLiteral("talId"), uuid(t.talId)}, {QStringLiteral("tasTitle"), t.tasTitle},
            {QStringLiteral("tasIsDone"), t.tasIsDone}, {QStringLiteral("tasDueDate"), time(t.tasDueDate)},
            {QStringLiteral("tasEisenhowerTag"),
                t.tasEisenhowerTag ? QJsonValue(EisenhowerTag::rawValue(*t.tasEisenhowerTag)) : QJsonValue()}};
        // Written only when they hold something, so that a file of tasks without them reads the
        // same in versions that do not know them.
        if (t.tasDueHasTime)
            task.insert(QStringLiteral("tasDueHasTime"), true);
        if (t.tasRecurrence)
            task.insert(QStringLiteral("tasRecurrence"), TaskRecurrenceCodec::toJson(*t.tasRecurrence));
        if (t.tasOccurrence != 1)
            task.insert(QStringLiteral("tasOccurrence"), t.tasOccurrence);
        if (t.tasReminderMinutesBefore)
            task.insert(QStringLiteral("tasReminderMinutesBefore"), *t.tasReminderMinutesBefore);
        if (t.tasCompletedAt)
            task.insert(QStringLiteral("tasCompletedAt"), time(t.tasCompletedAt));
        tasks.append(task);
    }
    for (const DailyTaskEntity& d : snapshot.dailyTasks) {
        dailyTasks.append(QJsonObject {{QStringLiteral("dtaId"), uuid(d.dtaId)},
            {QStringLiteral("dtaUserId"), uuid(d.dtaUserId)}, {QStringLiteral("dtaDate"), time(d.dtaDate)},
            {QStringLiteral("dtaTitle"), d.dtaTitle}, {QStringLiteral("dtaIsDone"), d.dtaIsDone}});
    }
    for (const BitacoraEntryEntity& b : snapshot.bitacora) {
        bitacora.append(QJsonObject {{QStringLiteral("bteId"), uuid(b.bteId)},
            {QStringLiteral("bteUserId"), uuid(b.bteUserId)}, {QStringLiteral("prjId"), uuid(b.prjId)},
            {QStringLiteral("bteDate"), time(b.bteDate)}, {QStringLiteral("bteContent"), b.bteContent}});
    }
    const QJsonObject root {{QStringLiteral("format"), formatName}, {QStringLiteral("version"), version},
        {QStringLiteral("projects"), projects}, {QStringLiteral("taskLists"), taskLists},
        {QStringLiteral("tasks"), tasks}, {QStringLiteral("dailyTasks"), dailyTasks},
        {QStringLiteral("bitacora"), bitacora}};
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

std::optional<TasksSnapshot> read(const QByteArray& json, QString* error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    const QJsonObject root = document.object();
    auto fail = [&](const QString& why) -> std::optional<TasksSnapshot> {
        if (error)
            *error = why;
        return std::nullopt;
    };
    if (parseError.error != QJsonParseError::NoError)
        return fail(parseError.errorString());
    if (root.value(QStringLiteral("format")).toString() != formatName)
        return fail(QStringLiteral("This is not a Tolvane tasks export"));
    if (root.value(QStringLiteral("version")).toInt() > version)
        return fail(QStringLiteral("The file was written by a newer Tolvane"));

    Reader reader;
    TasksSnapshot snapshot;
    for (const QJsonValue& value : root.value(QStringLiteral("projects")).toArray()) {
        const QJsonObject o = value.toObject();
        snapshot.projects.append({reader.id(o, QStringLiteral("prjId")),
            reader.optionalId(o, QStringLiteral("prjUserId")), o.value(QStringLiteral("prjName")).toString(),
            o.value(QStringLiteral("prjDescription")).toString(), o.value(QStringLiteral("prjShowEveryDay")).toBool()});
    }
    for (const QJsonValue& value : root.value(QStringLiteral("taskLists")).toArray()) {
        const QJsonObject o = value.toObject();
        snapshot.taskLists.append({reader.id(o, QStringLiteral("talId")), reader.id(o, QStringLiteral("prjId")),
            o.value(QStringLiteral("talName")).toString(), o.value(QStringLiteral("talDescription")).toString(),
            o.value(QStringLiteral("talIsDefault")).toBool()});
    }
    for (const QJsonValue& value : root.value(QStringLiteral("tasks")).toArray()) {
        const QJsonObject o = value.toObject();
        const QJsonValue tag = o.value(QStringLiteral("tasEisenhowerTag"));
        TaskEntity task {.tasId = reader.id(o, QStringLiteral("tasId")),
            .prjId = reader.id(o, QStringLiteral("prjId")),
            .talId = reader.id(o, QStringLiteral("talId")),
            .tasTitle = o.value(QStringLiteral("tasTitle")).toString(),
            .tasIsDone = o.value(QStringLiteral("tasIsDone")).toBool(),
            .tasDueDate = reader.time(o, QStringLiteral("tasDueDate")),
            .tasEisenhowerTag = tag.isString() ? EisenhowerTag::fromRawValue(tag.toString()) : std::nullopt};
        task.tasDueHasTime = task.tasDueDate && o.value(QStringLiteral("tasDueHasTime")).toBool();
        const QJsonValue rule = o.value(QStringLiteral("tasRecurrence"));
        if (rule.isObject()) {
            task.tasRecurrence = TaskRecurrenceCodec::fromJson(rule.toObject());
            if (!task.tasRecurrence && reader.error.isEmpty())
                reader.error = QStringLiteral("'tasRecurrence' is not a repetition rule");
        }
        task.tasOccurrence = std::max(1, o.value(QStringLiteral("tasOccurrence")).toInt(1));
        if (o.value(QStringLiteral("tasReminderMinutesBefore")).isDouble())
            task.tasReminderMinutesBefore = o.value(QStringLiteral("tasReminderMinutesBefore")).toInt();
        task.tasCompletedAt = reader.time(o, QStringLiteral("tasCompletedAt"));
        snapshot.tasks.append(task);
    }
    for (const QJsonValue& value : root.value(QStringLiteral("dailyTasks")).toArray()) {
        const QJsonObject o = value.toObject();
        snapshot.dailyTasks.append({reader.id(o, QStringLiteral("dtaId")),
            reader.optionalId(o, QStringLiteral("dtaUserId")), reader.requiredTime(o, QStringLiteral("dtaDate")),
            o.value(QStringLiteral("dtaTitle")).toString(), o.value(QStringLiteral("dtaIsDone")).toBool()});
    }
    for (const QJsonValue& value : root.value(QStringLiteral("bitacora")).toArray()) {
        const QJsonObject o = value.toObject();
        snapshot.bitacora.append({reader.id(o, QStringLiteral("bteId")),
            reader.optionalId(o, QStringLiteral("bteUserId")), reader.id(o, QStringLiteral("prjId")),
            reader.requiredTime(o, QStringLiteral("bteDate")), o.value(QStringLiteral("bteContent")).toString()});
    }
    if (!reader.error.isEmpty())
        return fail(reader.error);
    return snapshot;
}

} // namespace TasksJsonFormat
