#pragma once

#include "platform/UserDefaults.h"

#include <QDBusVariant>
#include <QObject>

#include <optional>

class NotificationCenter;

// Light or dark. The user's choice in the settings ("appearanceMode": "system", "light" or
// "dark") when it is not "system"; otherwise as the desktop prefers: the freedesktop settings
// portal's "color-scheme" when a portal answers (followed live), else the palette the platform
// theme gave. TOLVANE_APPEARANCE ("light" or "dark") overrides them all.
class Appearance final : public QObject {
    Q_OBJECT

public:
    enum class Mode { system, light, dark };
    static inline const QString modeKey = QStringLiteral("appearanceMode");
    // Posted when the settings store a new choice.
    static inline const QString didChangeNotification = QStringLiteral("appearanceDidChange");

    static Mode storedMode(const UserDefaults& defaults);
    static void storeMode(UserDefaults defaults, Mode mode, NotificationCenter& center);

    explicit Appearance(QObject* parent = nullptr);

    // Reads the user's choice now and again whenever the settings change it.
    void followChoice(const UserDefaults& defaults, NotificationCenter& center);
    bool isDark() const { return m_isDark; }
    // Applies the current choice to the application's palette.
    void apply();

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void onSettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void update();

    std::optional<bool> m_forcedDark;
    Mode m_mode = Mode::system;
    bool m_desktopPrefersDark = false;
    bool m_isDark = false;
};
