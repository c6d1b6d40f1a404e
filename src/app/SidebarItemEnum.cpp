#include "SidebarItemEnum.h"

namespace SidebarItem {

QString label(SidebarItemEnum item)
{
    switch (item) {
    case SidebarItemEnum::schedule:
        //% "Schedule"
        return qtTrId("sidebar-agenda-link");
    case SidebarItemEnum::projects:
        //% "Projects"
        return qtTrId("sidebar-projects-link");
    case SidebarItemEnum::bitacora:
        //% "Logbook"
        return qtTrId("sidebar-bitacora-link");
    }
    return {};
}

QString symbol(SidebarItemEnum item)
{
    switch (item) {
    case SidebarItemEnum::schedule:
        return QStringLiteral("calendar");
    case SidebarItemEnum::projects:
        return QStringLiteral("checklist");
    case SidebarItemEnum::bitacora:
        return QStringLiteral("book.closed");
    }
    return {};
}

} // namespace SidebarItem
