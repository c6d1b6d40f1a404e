#include "screens/common/Icons.h"

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

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

// The bundled symbols are drawn in one grey, which all but disappears on a dark window. This
// engine draws them in a grey that suits the palette of the moment, so they follow a switch
// between light and dark as the theme's own icons would.
class PaletteSymbolEngine final : public QIconEngine {
public:
    explicit PaletteSymbolEngine(QString path)
        : m_path(std::move(path))
    {
        QFile file(m_path);
        if (file.open(QIODevice::ReadOnly))
            m_svg = file.readAll();
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
        QPixmap drawn = scaledPixmap(rect.size(), mode, state, ratio);
        painter->drawPixmap(rect, drawn);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1.0);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override
    {
        const QPalette palette = QApplication::palette();
        const bool dark = palette.color(QPalette::Window).lightness() < 128;
        QColor color = dark ? QColor(0xb4, 0xb4, 0xba) : QColor(0x6e, 0x6e, 0x73);
        if (mode == QIcon::Disabled)
            color = palette.color(QPalette::Disabled, QPalette::WindowText);
        else if (mode == QIcon::Selected)
            color = palette.color(QPalette::HighlightedText);
        const QSize pixels = size * scale;
        const QString key = QStringLiteral("tolvane-symbol:%1:%2:%3x%4")
                                .arg(m_path, color.name())
                                .arg(pixels.width())
                                .arg(pixels.height());
        QPixmap drawn;
        if (!QPixmapCache::find(key, &drawn)) {
            QByteArray svg = m_svg;
            svg.replace("#6e6e73", color.name().toLatin1());
            QSvgRenderer renderer(svg);
            drawn = QPixmap(pixels);
            drawn.fill(Qt::transparent);
            QPainter painter(&drawn);
            renderer.render(&painter);
            painter.end();
            QPixmapCache::insert(key, drawn);
        }
        drawn.setDevicePixelRatio(scale);
        return drawn;
    }

    QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override { return size; }
    QIconEngine* clone() const override { return new PaletteSymbolEngine(*this); }
    QString key() const override { return QStringLiteral("tolvane-palette-symbol"); }

private:
    QString m_path;
    QByteArray m_svg;
};

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
    const QIcon bundled(new PaletteSymbolEngine(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(found->bundled))));
    if (*found->themeName == '\0')
        return bundled;
    return QIcon::fromTheme(QLatin1String(found->themeName), bundled);
}

} // namespace
