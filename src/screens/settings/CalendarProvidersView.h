#pragma once

#include "calendar_providers/entities/CalendarProviderEntity.h"
#include "screens/settings/CalendarSettingsServices.h"

#include <QWidget>

#include <optional>

class AppServices;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QStackedWidget;
class SettingsButtonView;

// The calendar accounts: the registered accounts beside the chosen one's details, adding an
// account of the desktop's calendar store, switching one on or off and removing it. When the
// calendar store refuses access, only that and the way to the desktop's settings are shown.
class CalendarProvidersView final : public QWidget {
    Q_OBJECT

public:
    // Where the synthetic addresses of calendar-store accounts live: a reserved name that can
    // never receive mail.
    static inline const QString placeholderEmailDomain = QStringLiteral("calendars.tolvane.invalid");

    CalendarProvidersView(
        const AppServices& services, CalendarSettingsServices calendarServices, QWidget* parent = nullptr);

    // "Cuenta iOS calendar" and "eventKit@…" for the first account; the n-th gets the number n in
    // both, so that accounts stay told apart.
    static CalendarProviderEntity defaultDeviceAccount(int existingAccounts, const QDateTime& now);

    const QList<CalendarProviderEntity>& providers() const { return m_providers; }
    bool isAccessDenied() const { return m_isAccessDenied; }
    bool isLoading() const { return m_isLoading; }

    void reload();
    // Asks for the kind of account, then registers it; public for tests.
    void addAccount();

Q_SIGNALS:
    void reloaded();

protected:
    void showEvent(QShowEvent* event) override;

private:
    // The registry is opened per call: a keyring that comes back later is picked up then.
    template <typename Work> void runOnRegistry(const QString& action, Work work, bool changes);
    void render();
    void showSelected();
    std::optional<CalendarProviderEntity> selected() const;
    void setSelectedEnabled(bool enabled);
    void removeSelected();

    const AppServices& m_services;
    CalendarSettingsServices m_calendarServices;
    QList<CalendarProviderEntity> m_providers;
    bool m_isAccessDenied = false;
    bool m_isLoading = false;
    bool m_hasLoaded = false;
    QStackedWidget* m_pages;
    QWidget* m_deniedPage;
    QWidget* m_listPage;
    QListWidget* m_list;
    QLabel* m_empty;
    QLabel* m_error;
    QStackedWidget* m_detail;
    QLabel* m_selectPrompt;
    QWidget* m_details;
    QLabel* m_name;
    QLineEdit* m_email;
    QCheckBox* m_enabled;
};
