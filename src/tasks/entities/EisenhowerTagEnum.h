#pragma once

#include <QString>

#include <array>
#include <optional>

// The quadrants of the Eisenhower matrix. `delete` is spelled delete_ (a C++ keyword).
enum class EisenhowerTagEnum {
    doIt, // urgent and important
    planning, // important, not urgent
    delegate, // urgent, not important
    delete_, // neither
};

namespace EisenhowerTag {

inline constexpr std::array<EisenhowerTagEnum, 4> allCases
    = {EisenhowerTagEnum::doIt, EisenhowerTagEnum::planning, EisenhowerTagEnum::delegate, EisenhowerTagEnum::delete_};

// What the local store keeps: "do", "planning", "delegate", "delete".
QString rawValue(EisenhowerTagEnum tag);
std::optional<EisenhowerTagEnum> fromRawValue(const QString& raw);

// What the backend sends and receives: "urgent_important", "not_urgent_important", ...
QString apiValue(EisenhowerTagEnum tag);
// Exact, case-sensitive match; anything else (or nothing) is no tag, never an error.
std::optional<EisenhowerTagEnum> fromApiValue(const std::optional<QString>& api);

// "#RRGGBB".
QString colorHex(EisenhowerTagEnum tag);

} // namespace EisenhowerTag

size_t qHash(EisenhowerTagEnum tag, size_t seed = 0) noexcept;
