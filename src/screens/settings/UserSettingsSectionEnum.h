#pragma once

#include <QString>

#include <array>

enum class UserSettingsSectionEnum { myAccount, schedule, accounts, calendars, alarm, help };

namespace UserSettingsSection {

inline constexpr std::array<UserSettingsSectionEnum, 6> allCases
    = {UserSettingsSectionEnum::myAccount, UserSettingsSectionEnum::schedule, UserSettingsSectionEnum::accounts,
        UserSettingsSectionEnum::calendars, UserSettingsSectionEnum::alarm, UserSettingsSectionEnum::help};

QString title(UserSettingsSectionEnum section);
// The symbol beside the title in the section list.
QString symbol(UserSettingsSectionEnum section);

} // namespace UserSettingsSection
