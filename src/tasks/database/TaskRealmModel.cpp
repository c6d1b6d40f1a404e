#include "tasks/database/TaskRealmModel.h"

#include "storage/RealmValue.h"
#include "tasks/entities/TaskRecurrenceCodec.h"

namespace {

// The columns version 2 added, in table order; ALTER TABLE appends them after the older ones,
// so an upgraded table and a new one have the same column order.
const QString version2Columns = QStringLiteral("tasDueHasTime INTEGER NOT NULL DEFAULT 0, "
                                               "tasRecurrence TEXT, "
                                               "tasOccurrence INTEGER NOT NULL DEFAULT 1, "
                                               "tasReminderMinutesBefore INTEGER, "
                                               "tasCompletedAt INTEGER");

} // namespace

RealmObjectType TaskRealmModel::objectType()
{
    return {QStringLiteral("TaskRealmModel"),
        QStringLiteral("tasId TEXT PRIMARY KEY NOT NULL, "
                       "prjId TEXT NOT NULL, "
                       "talId TEXT NOT NULL, "
                       "tasTitle TEXT NOT NULL, "
                       "tasIsDone INTEGER NOT NULL, "
                       "tasDueDate INTEGER, "
                       "tasEisenhowerTag TEXT, ")
            + version2Columns,
        // A list's tasks and a project's tasks are what the screens read; the days' views and the
        // evening review look tasks up by due date and by completion time across all lists.
        {QStringLiteral("talId"), QStringLiteral("prjId"), QStringLiteral("tasDueDate"),
            QStringLiteral("tasCompletedAt")}};
}

void TaskRealmModel::migrate(RealmDatabase& database, quint64 oldVersion)
{
    if (oldVersion < 2) {
        // A table made by a program that wrote the new columns under the old version number
        // already has some of them.
        QStringList present;
        for (const RealmRow& column :
            database.query(QStringLiteral("PRAGMA table_info(\"%1\")").arg(objectType().name)))
            present.append(column.at(1).toString());
        for (const QString& column : version2Columns.split(QStringLiteral(", "))) {
            if (!present.contains(column.section(QLatin1Char(' '), 0, 0)))
                database.execute(QStringLiteral("ALTER TABLE \"%1\" ADD COLUMN %2").arg(objectType().name, column));
        }
        // Version 1 kept every due date as an instant, shown as its local day. One at midnight
        // UTC (a day from the backend) or at local midnight (a day typed without a time) is a
        // whole day, kept from now on as that day's midnight UTC; any other keeps its instant
        // and gains a time. One statement does the common cases; only the rows at local
        // midnight, few, are read and rewritten one by one.
        const QString table = objectType().name;
        database.execute(QStringLiteral("UPDATE \"%1\" SET tasDueHasTime = 1 "
                                        "WHERE tasDueDate IS NOT NULL AND tasDueDate % 86400000 != 0")
                             .arg(table));
        const auto timed
            = database.query(QStringLiteral("SELECT tasId, tasDueDate FROM \"%1\" WHERE tasDueHasTime = 1").arg(table));
        for (const RealmRow& row : timed) {
            const QDateTime due = RealmValue::toDate(row.at(1));
            if (due.toLocalTime().time() != QTime(0, 0))
                continue;
            database.execute(
                QStringLiteral("UPDATE \"%1\" SET tasDueDate = ?, tasDueHasTime = 0 WHERE tasId = ?").arg(table),
                {RealmValue::fromDate(TaskEntity::dueOnDay(due.toLocalTime().date())), row.at(0)});
        }
    }
}

RealmRow TaskRealmModel::toRow() const
{
    return {RealmValue::fromUuid(tasId), RealmValue::fromUuid(prjId), RealmValue::fromUuid(talId), tasTitle, tasIsDone,
        RealmValue::fromOptionalDate(tasDueDate), RealmValue::fromOptionalString(tasEisenhowerTag), tasDueHasTime,
        RealmValue::fromOptionalString(tasRecurrence), tasOccurrence,
        tasReminderMinutesBefore ? QVariant(*tasReminderMinutesBefore) : QVariant(),
        RealmValue::fromOptionalDate(tasCompletedAt)};
}

TaskRealmModel TaskRealmModel::fromRow(const RealmRow& row)
{
    return {RealmValue::toUuid(row.at(0)), RealmValue::toUuid(row.at(1)), RealmValue::toUuid(row.at(2)),
        row.at(3).toString(), row.at(4).toBool(), RealmValue::toOptionalDate(row.at(5)),
        RealmValue::toOptionalString(row.at(6)), row.at(7).toBool(), RealmValue::toOptionalString(row.at(8)),
        int(row.at(9).toLongLong()),
        row.at(10).isNull() ? std::nullopt : std::optional<int>(int(row.at(10).toLongLong())),
        RealmValue::toOptionalDate(row.at(11))};
}

TaskRealmModel TaskRealmModel::fromEntity(const TaskEntity& entity)
{
    TaskRealmModel record;
    record.tasId = entity.tasId;
    record.prjId = entity.prjId;
    record.talId = entity.talId;
    record.tasTitle = entity.tasTitle;
    record.tasIsDone = entity.tasIsDone;
    record.tasDueDate = entity.tasDueDate;
    if (entity.tasEisenhowerTag)
        record.tasEisenhowerTag = EisenhowerTag::rawValue(*entity.tasEisenhowerTag);
    record.tasDueHasTime = entity.tasDueHasTime;
    if (entity.tasRecurrence)
        record.tasRecurrence = TaskRecurrenceCodec::toText(*entity.tasRecurrence);
    record.tasOccurrence = entity.tasOccurrence;
    record.tasReminderMinutesBefore = entity.tasReminderMinutesBefore;
    record.tasCompletedAt = entity.tasCompletedAt;
    return record;
}

TaskEntity TaskRealmModel::toEntity() const
{
    TaskEntity entity;
    entity.tasId = tasId;
    entity.prjId = prjId;
    entity.talId = talId;
    entity.tasTitle = tasTitle;
    entity.tasIsDone = tasIsDone;
    entity.tasDueDate = tasDueDate;
    if (tasEisenhowerTag)
        entity.tasEisenhowerTag = EisenhowerTag::fromRawValue(*tasEisenhowerTag);
    entity.tasDueHasTime = tasDueHasTime;
    if (tasRecurrence)
        entity.tasRecurrence = TaskRecurrenceCodec::fromText(*tasRecurrence);
    entity.tasOccurrence = tasOccurrence;
    entity.tasReminderMinutesBefore = tasReminderMinutesBefore;
    entity.tasCompletedAt = tasCompletedAt;
    return entity;
}
