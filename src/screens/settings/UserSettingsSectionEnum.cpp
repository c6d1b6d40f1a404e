#include "screens/settings/UserSettingsSectionEnum.h"

#include <QCoreApplication>

QString UserSettingsSection::title(UserSettingsSectionEnum section)
{
    switch (section) {
    case UserSettingsSectionEnum::myAccount:
        //% "My account"
        return qtTrId("user-settings-account-section-title");
    case UserSettingsSectionEnum::schedule:
        //% "Schedule hours"
        return qtTrId("user-settings-hours-section-title");
    case UserSettingsSectionEnum::accounts:
        //% "Calendar accounts"
        return qtTrId("user-settings-accounts-section-title");
    case UserSettingsSectionEnum::calendars:
        //% "Calendars"
        return qtTrId("user-settings-calendars-section-title");
    case UserSettingsSectionEnum::alarm:
        //% "Alarms"
        return qtTrId("user-settings-alarm-section-title");
    case UserSettingsSectionEnum::help:
        //% "Help"
        return qtTrId("user-settings-help-section-title");
    case UserSettingsSectionEnum::data:
        //% "Backups and export"
        return qtTrId("user-settings-data-section-title");
    }
    return {};
}

QString UserSettingsSection::symbol(UserSettingsSectionEnum section)
{
    switch (section) {
    case UserSettingsSectionEnum::myAccount:
        return QStringLiteral("person.crop.circle");
    case UserSettingsSectionEnum::schedule:
        return QStringLiteral("sun.max");
    case UserSettingsSectionEnum::accounts:
        return QStringLiteral("gearshape");
    case UserSettingsSectionEnum::calendars:
        return QStringLiteral("calendar");
    case UserSettingsSectionEnum::alarm:
        return QStringLiteral("alarm");
    case UserSettingsSectionEnum::help:
        return QStringLiteral("pencil");
    case UserSettingsSectionEnum::data:
        return QStringLiteral("book.closed");
    }
    return {};
}
