#pragma once

#include <QDateTime>
#include <QString>

// The texts the driver's logbook mode saves one after another, as the editor's autosave does
// while someone types: each revision longer than the one before, so that a torn save shows.
namespace LogbookRevisions {

inline const QDateTime day = QDateTime(QDate(2026, 3, 14), QTime(12, 0));

inline QString text(int revision)
{
    return QStringLiteral("revision %1\n").arg(revision) + QString(40 * revision, QLatin1Char('w'));
}

// The revision a saved text is, or -1 when it is none of them whole.
inline int revisionOf(const QString& saved)
{
    const int revision = saved.section(QLatin1Char('\n'), 0, 0).section(QLatin1Char(' '), 1, 1).toInt();
    return saved == text(revision) ? revision : -1;
}

} // namespace LogbookRevisions
