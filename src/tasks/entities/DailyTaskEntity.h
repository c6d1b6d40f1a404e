#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

// One item of the user's checklist for one day.
struct DailyTaskEntity {
    QUuid dtaId = QUuid::createUuid();
    QUuid dtaUserId;
    QDateTime dtaDate;
    QString dtaTitle;
    bool dtaIsDone = false;

    friend bool operator==(const DailyTaskEntity&, const DailyTaskEntity&) = default;
};
