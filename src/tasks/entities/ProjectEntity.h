#pragma once

#include <QString>
#include <QUuid>

struct ProjectEntity {
    QUuid prjId = QUuid::createUuid();
    QUuid prjUserId;
    QString prjName;
    QString prjDescription;
    bool prjShowEveryDay = false;

    friend bool operator==(const ProjectEntity&, const ProjectEntity&) = default;
};
