#pragma once

#include "MeetAlarmNavigationPayload.h"
#include "SidebarItemEnum.h"

#include <QDateTime>
#include <QWidget>

#include <functional>
#include <optional>

class AppServices;
class QListWidget;
class QStackedWidget;
class UserProfileChipView;

// The root of the window: the sidebar with the three workspaces and the account chip, and the
// chosen workspace beside it. Each workspace is built the first time it is chosen.
class ContentView final : public QWidget {
    Q_OBJECT

public:
    using ScreenFactory = std::function<QWidget*(SidebarItemEnum item, QWidget* parent)>;

    ContentView(const AppServices& services, ScreenFactory makeScreen, QWidget* parent = nullptr);

    std::optional<SidebarItemEnum> selectedSidebarItem() const { return m_selectedSidebarItem; }
    void select(std::optional<SidebarItemEnum> item);
    QWidget* screen(SidebarItemEnum item) const;
    // The schedule, on day.
    void openDate(const QDate& day);

    // Handed to the schedule, which shows the day, opens the meet and clears them.
    std::optional<MeetAlarmNavigationPayload> pendingMeetNavigation;
    std::optional<QDateTime> pendingDateSelection;

Q_SIGNALS:
    void pendingMeetNavigationChanged();

private:
    const AppServices& m_services;
    ScreenFactory m_makeScreen;
    std::optional<SidebarItemEnum> m_selectedSidebarItem;
    QListWidget* m_sidebar;
    QStackedWidget* m_detail;
    QWidget* m_placeholder;
    QMap<int, QWidget*> m_screens;
};
