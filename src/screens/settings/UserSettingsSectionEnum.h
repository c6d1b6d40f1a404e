#pragma once

#include <QString>

#include <array>

enum class UserSettingsSectionEnum { myAccount, schedule, accounts, calendars, alarm, help, data };

namespace UserSettingsSection {

inline constexpr std::array<UserSettingsSectionEnum, 7> allCases = {UserSettingsSectionEnum::myAccount,
    UserSettingsSectionEnum::schedule, UserSettingsSectionEnum::accounts, UserSettingsSectionEnum::calendars,
    UserSettingsSectionEnum::alarm, UserSettingsSectionEnum::help, UserSettingsSectionEnum::data};

QString title(UserSettingsSectionEnum section);
// The symbol beside the title in the section list.
QString symbol(UserSettingsSectionEnum section);

} // namespace UserSettingsSection
