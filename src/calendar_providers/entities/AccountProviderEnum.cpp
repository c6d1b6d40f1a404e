#include "calendar_providers/entities/AccountProviderEnum.h"

#include <QHash>

namespace AccountProvider {

QString rawValue(AccountProviderEnum kind)
{
    switch (kind) {
    case AccountProviderEnum::eventKit:
        return QStringLiteral("eventKit");
    }
    Q_UNREACHABLE();
    return {};
}

std::optional<AccountProviderEnum> fromRawValue(const QString& raw)
{
    for (AccountProviderEnum kind : allCases) {
        if (raw == rawValue(kind))
            return kind;
    }
    return std::nullopt;
}

} // namespace AccountProvider

size_t qHash(AccountProviderEnum kind, size_t seed) noexcept
{
    return qHash(int(kind), seed);
}
