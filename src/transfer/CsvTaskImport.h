#pragma once

#include "platform/ResultEntity.h"
#include "tasks/entities/TaskListEntity.h"
#include "tasks/repositories/TaskRepository.h"
#include "transfer/TransferControl.h"

#include <QList>
#include <QStringList>

#include <memory>

// Tasks from a CSV file written by any program, into one list: which column holds what is the
// user's choice. A row without a title is left out and counted.
class CsvTaskImport {
public:
    // Column indexes; -1 when the file has no such column.
    struct Mapping {
        int title = -1;
        int done = -1;
        int due = -1;
        int quadrant = -1;
    };
    struct Outcome {
        qint64 created = 0;
        qint64 skipped = 0;

        friend bool operator==(const Outcome&, const Outcome&) = default;
    };

    // A guess from the header's names (this program's own export is recognised whole).
    static Mapping guess(const QStringList& header);
    // "yes", "true", "1", "x", "done" (any case) are done.
    static bool readsAsDone(const QString& text);

    CsvTaskImport(std::shared_ptr<TaskRepository> tasks, TaskListEntity target);

    // rows: the records after the header. data: Outcome.
    ResultEntity import(const QList<QStringList>& rows, const Mapping& mapping, TransferControl& control) const;

    static inline const QString cancelledMessage = QStringLiteral("Cancelled");

private:
    std::shared_ptr<TaskRepository> m_tasks;
    TaskListEntity m_target;
};
