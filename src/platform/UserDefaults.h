#pragma once

#include <QString>
#include <QVariant>

// The user's preferences: one INI file, by default "$XDG_CONFIG_HOME/Quorvel/Tolvane.conf".
// A value type that only remembers the file, so copies can be handed to any thread; every call
// opens its own QSettings, which share one cache per file within the process.
class UserDefaults {
public:
    static UserDefaults standard();
    explicit UserDefaults(QString filePath);

    const QString& filePath() const { return m_filePath; }

    bool contains(const QString& key) const;
    QVariant value(const QString& key) const;
    // A missing or unreadable value reads as false.
    bool boolValue(const QString& key) const;
    void setValue(const QString& key, const QVariant& value);
    void remove(const QString& key);

private:
    QString m_filePath;
};
