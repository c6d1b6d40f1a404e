#pragma once

#include <QWidget>

class AppServices;
class QCheckBox;
class QComboBox;

// The day's rituals in the settings: the morning plan, moving unfinished daily tasks by
// themselves, the hours of the two reminders, and starting at login in the tray.
class RitualSettingsView final : public QWidget {
    Q_OBJECT

public:
    explicit RitualSettingsView(const AppServices& services, QWidget* parent = nullptr);

    QCheckBox* startAtLogin() const { return m_startAtLogin; }

private:
    QComboBox* hourChoice(const QString& key);

    const AppServices& m_services;
    QCheckBox* m_startAtLogin;
};
