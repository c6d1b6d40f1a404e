#include "screens/common/Icons.h"

#include <QHash>

namespace {

struct Mapping {
    const char* themeName;
    const char* bundled;
};

// Symbol name -> freedesktop icon name and the bundled fallback under :/icons.
const QHash<QString, Mapping>& table()
{
    static const QHash<QString, Mapping> mappings = {
        {QStringLiteral("calendar"), {"x-office-calendar", "calendar"}},
        {QStringLiteral("checklist"), {"view-list-bullet-symbolic", "checklist"}},
        {QStringLiteral("book.closed"), {"accessories-dictionary", "book"}},
        {QStringLiteral("checkmark.circle.fill"), {"emblem-default", "checkmark"}},
        {QStringLiteral("circle"), {"", "circle"}},
        {QStringLiteral("exclamationmark.triangle.fill"), {"dialog-warning", "warning"}},
        {QStringLiteral("trash"), {"user-trash", "trash"}},
        {QStringLiteral("pencil"), {"document-edit", "pencil"}},
        {QStringLiteral("plus"), {"list-add", "plus"}},
        {QStringLiteral("star"), {"starred", "star"}},
        {QStringLiteral("star.fill"), {"starred", "star-fill"}},
        {QStringLiteral("sun.max"), {"weather-clear", "sun"}},
        {QStringLiteral("person.crop.circle"), {"avatar-default", "person"}},
        {QStringLiteral("gearshape"), {"preferences-system", "gear"}},
        {QStringLiteral("alarm"), {"alarm-symbolic", "alarm"}},
        {QStringLiteral("mappin"), {"mark-location", "pin"}},
        {QStringLiteral("chevron.left"), {"go-previous", "chevron-left"}},
        {QStringLiteral("chevron.right"), {"go-next", "chevron-right"}},
        {QStringLiteral("square.grid.2x2"), {"view-grid", "grid"}},
        {QStringLiteral("list.bullet"), {"view-list", "checklist"}},
    };
    return mappings;
}

QIcon lookUp(const QString& name);

} // namespace

namespace Icons {

QIcon symbol(const QString& name)
{
    // Theme lookups and SVG loading are slow enough to show when hundreds of rows ask.
    static QHash<QString, QIcon> cache;
    if (const auto cached = cache.constFind(name); cached != cache.cend())
        return *cached;
    const QIcon icon = lookUp(name);
    cache.insert(name, icon);
    return icon;
}

} // namespace Icons

namespace {

QIcon lookUp(const QString& name)
{
    const auto found = table().constFind(name);
    if (found == table().cend())
        return QIcon();
    const QIcon bundled(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(found->bundled)));
    if (*found->themeName == '\0')
        return bundled;
    return QIcon::fromTheme(QLatin1String(found->themeName), bundled);
}

} // namespace
