#pragma once

#include <QSet>
#include <QString>

class NotificationCenter;

// The calendars whose events the schedule leaves out, by calendar identifier. Kept in the shared
// group container. Nothing is cached; every load reads the file again.
class HiddenCalendarsStore {
public:
    static inline const QString fileName = QStringLiteral("hiddenCalendarIdentifiers.json");

    // In "$XDG_DATA_HOME/group.tolvane", or the temporary directory when that cannot be made.
    static HiddenCalendarsStore standard(NotificationCenter& center);
    HiddenCalendarsStore(const QString& directory, NotificationCenter& center);

    const QString& filePath() const { return m_filePath; }

    QSet<QString> load() const;
    // Posts "hiddenCalendarsDidChange" once the file is written, so open schedules reload their
    // meets; a failed write is logged, posts nothing and leaves the previous file.
    void save(const QSet<QString>& calendarIdentifiers) const;

private:
    QString m_filePath;
    NotificationCenter* m_center;
};
