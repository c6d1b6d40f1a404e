#pragma once

#include "calendar_providers/entities/AccountProviderEnum.h"

#include <QString>

// The kinds of calendar provider the user switched on in the providers settings. Nothing is
// cached; every load reads the file again.
class EnabledCalendarProvidersStore {
public:
    static inline const QString fileName = QStringLiteral("enabledCalendarProviders.json");

    // In "$XDG_DATA_HOME/Tolvane".
    static EnabledCalendarProvidersStore standard();
    explicit EnabledCalendarProvidersStore(const QString& directory);

    const QString& filePath() const { return m_filePath; }

    AccountProviderSet load() const;
    // Failures are logged and otherwise swallowed; the previous file stays as it was.
    void save(const AccountProviderSet& kinds) const;

private:
    QString m_filePath;
};
