#include "transfer/CsvTaskImport.h"

namespace {

QString cell(const QStringList& row, int column)
{
    return column >= 0 && column < row.size() ? row.at(column).trimmed() : QString();
}

std::optional<QDateTime> dueDate(const QString& text)
{
    if (text.isEmpty())
        return std::nullopt;
    QDateTime time = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!time.isValid()) {
        const QDate day = QDate::fromString(text, Qt::ISODate);
        if (day.isValid())
            time = QDateTime(day, QTime(0, 0));
    }
    return time.isValid() ? std::optional<QDateTime>(time) : std::nullopt;
}

} // namespace

CsvTaskImport::Mapping CsvTaskImport::guess(const QStringList& header)
{
    Mapping mapping;
    for (int i = 0; i < header.size(); ++i) {
        const QString name = header.at(i).trimmed().toLower();
        if (mapping.title < 0
            && (name == QStringLiteral("title") || name == QStringLiteral("task") || name == QStringLiteral("name")))
            mapping.title = i;
        else if (mapping.done < 0 && (name == QStringLiteral("done") || name == QStringLiteral("completed")))
            mapping.done = i;
        else if (mapping.due < 0 && (name == QStringLiteral("due") || name == QStringLiteral("due date")))
            mapping.due = i;
        else if (mapping.quadrant < 0 && (name == QStringLiteral("quadrant") || name == QStringLiteral("tag")))
            mapping.quadrant = i;
    }
    return mapping;
}

bool CsvTaskImport::readsAsDone(const QString& text)
{
    static const QStringList yes {QStringLiteral("yes"), QStringLiteral("true"), QStringLiteral("1"),
        QStringLiteral("x"), QStringLiteral("done"), QStringLiteral("sí"), QStringLiteral("si")};
    return yes.contains(text.trimmed().toLower());
}

CsvTaskImport::CsvTaskImport(std::shared_ptr<TaskRepository> tasks, TaskListEntity target)
    : m_tasks(std::move(tasks))
    , m_target(std::move(target))
{
}

ResultEntity CsvTaskImport::import(
    const QList<QStringList>& rows, const Mapping& mapping, TransferControl& control) const
{
    Outcome outcome;
    qint64 done = 0;
    for (const QStringList& row : rows) {
        if (control.isCancelled())
            return ResultEntity::applicationFailure(cancelledMessage);
        const QString title = cell(row, mapping.title);
        if (title.isEmpty()) {
            ++outcome.skipped;
        } else {
            TaskEntity task;
            task.prjId = m_target.prjId;
            task.talId = m_target.talId;
            task.tasTitle = title;
            task.tasDueDate = dueDate(cell(row, mapping.due));
            const QString quadrant = cell(row, mapping.quadrant);
            task.tasEisenhowerTag = EisenhowerTag::fromRawValue(quadrant);
            if (!task.tasEisenhowerTag)
                task.tasEisenhowerTag = EisenhowerTag::fromApiValue(quadrant);
            task.tasIsDone = readsAsDone(cell(row, mapping.done));
            const ResultEntity created = m_tasks->create(task);
            const TaskEntity* made = created.dataAs<TaskEntity>();
            if (!made)
                return created;
            if (made->tasIsDone != task.tasIsDone) {
                if (const ResultEntity set = m_tasks->setDone(made->tasId, task.tasIsDone); !set.result)
                    return set;
            }
            if (made->tasEisenhowerTag != task.tasEisenhowerTag) {
                if (const ResultEntity set = m_tasks->setTag(made->tasId, task.tasEisenhowerTag); !set.result)
                    return set;
            }
            ++outcome.created;
        }
        control.report(++done, rows.size());
    }
    return ResultEntity::success(outcome);
}
