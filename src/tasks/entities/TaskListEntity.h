#pragma once

#include <QString>
#include <QUuid>

struct TaskListEntity {
    QUuid talId = QUuid::createUuid();
    QUuid prjId;
    QString talName;
    QString talDescription;
    bool talIsDefault = false;

    friend bool operator==(const TaskListEntity&, const TaskListEntity&) = default;
};
