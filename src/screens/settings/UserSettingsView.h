#pragma once

#include "screens/settings/CalendarSettingsServices.h"
#include "screens/settings/UserSettingsSectionEnum.h"

#include <QDialog>

#include <functional>

class AccountSettingsView;
class AlarmSettingsView;
class AppServices;
class CalendarProvidersView;
class CalendarVisibilitySettingsView;
class HelpSettingsView;
class QListWidget;
class QSpinBox;
class QStackedWidget;

// The settings window: one section at a time, chosen from the list beside it. Every change is
// stored as it is made, so closing the window needs no save.
class UserSettingsView final : public QDialog {
    Q_OBJECT

public:
    static inline const QString startHourKey = QStringLiteral("dailyEventsStartHour");
    static inline const QString endHourKey = QStringLiteral("dailyEventsEndHour");
    static constexpr int defaultStartHour = 5;
    static constexpr int defaultEndHour = 21;
    static constexpr int formWidth = 560;

    // makeConsole builds the information console shown under the help form; it lives with the
    // application shell, above the screens.
    using ConsoleFactory = std::function<QWidget*(QWidget* parent)>;

    UserSettingsView(const AppServices& services, CalendarSettingsServices calendarServices, ConsoleFactory makeConsole,
        QWidget* parent = nullptr);

    UserSettingsSectionEnum selectedSection() const { return m_selectedSection; }
    void selectSection(UserSettingsSectionEnum section);
    QWidget* sectionView(UserSettingsSectionEnum section) const;

    int startHour() const;
    int endHour() const;

private:
    QWidget* makeScheduleSection();
    void saveHours(bool startChanged);

    const AppServices& m_services;
    UserSettingsSectionEnum m_selectedSection = UserSettingsSectionEnum::myAccount;
    QListWidget* m_sections;
    QStackedWidget* m_pages;
    QSpinBox* m_startHour = nullptr;
    QSpinBox* m_endHour = nullptr;
};
