#pragma once

#include "tasks/entities/TaskListEntity.h"
#include "transfer/CsvTaskImport.h"

#include <QDialog>

class QComboBox;

// Asks which column of a CSV file holds a task's title, done flag, due date and quadrant, and
// which list the tasks go into. The guess from the header's names is preselected.
class CsvMappingDialog : public QDialog {
    Q_OBJECT

public:
    struct Target {
        QString label;
        TaskListEntity list;
    };

    CsvMappingDialog(const QStringList& header, const QList<Target>& targets, QWidget* parent = nullptr);

    CsvTaskImport::Mapping mapping() const;
    TaskListEntity target() const;

private:
    QComboBox* columnChooser(const QStringList& header, int guessed, const QString& name);

    QComboBox* m_title;
    QComboBox* m_done;
    QComboBox* m_due;
    QComboBox* m_quadrant;
    QComboBox* m_list;
    QList<Target> m_targets;
};
