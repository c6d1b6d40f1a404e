#pragma once

#include "calendar_providers/applications/CalendarProviderRegistryApplication.h"
#include "storage/RealmConfiguration.h"

#include <QSet>
#include <QString>

// What the calendar settings are built over: where the encrypted registry lives. The program
// uses the standard place; tests keep it in a scratch folder.
struct CalendarSettingsServices {
    RealmConfiguration storeDefaults;

    static CalendarSettingsServices standard();

    // data: the CalendarProviderRegistryApplication over the keyring and the desktop's calendar
    // store; fails when the registry's key cannot be had. Blocking: call it off the GUI thread,
    // once the calendar store was first touched on the GUI thread.
    CalendarProvidersResultEntity registryApplication() const;
};

// The desktop's own settings pages that the alarm and account settings send the user to.
namespace DesktopSettings {

enum class Page { notifications, calendarAccounts };

// The program and arguments that open the page on this desktop; empty where none exists.
QStringList command(Page page);
bool open(Page page);

} // namespace DesktopSettings
