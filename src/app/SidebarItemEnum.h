#pragma once

#include <QString>

#include <array>

// The workspaces of the sidebar, in their order.
enum class SidebarItemEnum { schedule, projects, bitacora };

namespace SidebarItem {

inline constexpr std::array<SidebarItemEnum, 3> allCases
    = {SidebarItemEnum::schedule, SidebarItemEnum::projects, SidebarItemEnum::bitacora};

QString label(SidebarItemEnum item);
// The symbol name, shown through Icons::symbol.
QString symbol(SidebarItemEnum item);

} // namespace SidebarItem
