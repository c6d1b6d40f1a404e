#pragma once

#include "calendar_providers/entities/AccountProviderEnum.h"

#include <QString>

// The kinds of account whose calendars are read, as the registry last saw them: the kinds of the
// enabled registered accounts. Kept in the shared group container, where companion processes
// read it too. Nothing is cached; every load reads the file again.
class EnabledCalendarAccountsStore {
public:
    static inline const QString fileName = QStringLiteral("enabledCalendarAccounts.json");

    // In "$XDG_DATA_HOME/group.tolvane", or the temporary directory when that cannot be made.
    static EnabledCalendarAccountsStore standard();
    explicit EnabledCalendarAccountsStore(const QString& directory);

    const QString& filePath() const { return m_filePath; }

    AccountProviderSet load() const;
    // Failures are logged and otherwise swallowed: the registry repairs the file on its next list.
    void save(const AccountProviderSet& kinds) const;
    void clear() const;

private:
    QString m_filePath;
};
