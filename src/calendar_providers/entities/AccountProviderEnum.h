#pragma once

#include <QSet>
#include <QString>

#include <array>
#include <optional>

// The kinds of calendar account Tolvane can read. Today only the desktop's own calendar store.
enum class AccountProviderEnum {
    eventKit,
};

namespace AccountProvider {

inline constexpr std::array<AccountProviderEnum, 1> allCases = {AccountProviderEnum::eventKit};

// What the registry and the kind files keep: "eventKit".
QString rawValue(AccountProviderEnum kind);
// Exact, case-sensitive match; anything else names no kind.
std::optional<AccountProviderEnum> fromRawValue(const QString& raw);

} // namespace AccountProvider

size_t qHash(AccountProviderEnum kind, size_t seed = 0) noexcept;

using AccountProviderSet = QSet<AccountProviderEnum>;
