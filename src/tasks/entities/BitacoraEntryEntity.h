#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

// What one user wrote about one project for one day.
struct BitacoraEntryEntity {
    QUuid bteId = QUuid::createUuid();
    QUuid bteUserId;
    QUuid prjId;
    QDateTime bteDate;
    QString bteContent;

    friend bool operator==(const BitacoraEntryEntity&, const BitacoraEntryEntity&) = default;
};
