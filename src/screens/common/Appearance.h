#pragma once

#include <QDBusVariant>
#include <QObject>

// Light or dark, as the desktop prefers: the freedesktop settings portal's "color-scheme" when
// a portal answers (followed live), else the palette the platform theme gave. TOLVANE_APPEARANCE
// ("light" or "dark") overrides both.
class Appearance final : public QObject {
    Q_OBJECT

public:
    explicit Appearance(QObject* parent = nullptr);

    bool isDark() const { return m_isDark; }
    // Applies the current choice to the application's palette.
    void apply();

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void onSettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void setDark(bool dark);

    bool m_isDark = false;
};
