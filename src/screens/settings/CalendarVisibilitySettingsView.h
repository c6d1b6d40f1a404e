#pragma once

#include "meetings/entities/EventKitAccountCalendarsEntity.h"

#include <QSet>
#include <QWidget>

#include <optional>

class AppServices;
class QComboBox;
class QGridLayout;
class QLabel;

// Every calendar of every account of the calendar store, with whether its meets are shown and
// whether they may ring alarms, and the calendar that new meets go to.
class CalendarVisibilitySettingsView final : public QWidget {
    Q_OBJECT

public:
    static inline const QString defaultCalendarKey = QStringLiteral("defaultCalendarIdentifier");
    static constexpr int toggleColumnWidth = 90;

    explicit CalendarVisibilitySettingsView(const AppServices& services, QWidget* parent = nullptr);

    const QList<EventKitAccountCalendarsEntity>& accounts() const { return m_accounts; }
    const QSet<QString>& hiddenIdentifiers() const { return m_hiddenIdentifiers; }
    const QSet<QString>& alarmEnabledIdentifiers() const { return m_alarmEnabledIdentifiers; }
    const std::optional<QString>& defaultIdentifier() const { return m_defaultIdentifier; }
    bool isLoading() const { return m_isLoading; }

    void reload();

Q_SIGNALS:
    void reloaded();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void render();
    void setCalendarShown(const QString& calendarIdentifier, bool shown);
    void setAlarmEnabled(const QString& calendarIdentifier, bool enabled);
    void setDefaultIdentifier(const std::optional<QString>& identifier);

    const AppServices& m_services;
    QList<EventKitAccountCalendarsEntity> m_accounts;
    QSet<QString> m_hiddenIdentifiers;
    QSet<QString> m_alarmEnabledIdentifiers;
    std::optional<QString> m_defaultIdentifier;
    bool m_isLoading = false;
    QWidget* m_rows;
    QGridLayout* m_grid;
    QLabel* m_empty;
    QComboBox* m_default;
};
