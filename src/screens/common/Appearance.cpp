#include "screens/common/Appearance.h"

#include "platform/NotificationCenter.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QPalette>
#include <QProxyStyle>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOption>

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");

// 1 = prefer dark, 2 = prefer light, 0 = no preference; the reply is a variant in a variant.
std::optional<bool> portalPrefersDark()
{
    QDBusMessage call
        = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, QStringLiteral("Read"));
    call.setArguments({appearanceGroup, colorSchemeKey});
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 500);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return std::nullopt;
    QVariant value = reply.arguments().constFirst();
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    const uint scheme = value.toUInt();
    if (scheme == 0)
        return std::nullopt;
    return scheme == 1;
}

// Fusion draws the box of a check box and a radio button in the window colour made darker:
// on a dark window that is black on near-black. Here the box takes a light grey edge.
class DarkContrastStyle final : public QProxyStyle {
public:
    DarkContrastStyle()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
    {
    }

    void drawPrimitive(
        PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override
    {
        if (element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton) {
            if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
                QStyleOptionButton lighter(*button);
                lighter.palette.setColor(QPalette::Window, QColor(0xa8, 0xa8, 0xb0));
                QProxyStyle::drawPrimitive(element, &lighter, painter, widget);
                return;
            }
        }
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
};

QPalette darkPalette()
{
    QPalette palette;
    const QColor window(0x2b, 0x2b, 0x2e);
    const QColor base(0x1f, 0x1f, 0x22);
    const QColor text(0xe8, 0xe8, 0xea);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0x3e, 0x8b, 0xff));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x8e, 0x8e, 0x93));
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(0x6e, 0x6e, 0x73));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(0x6e, 0x6e, 0x73));
    return palette;
}

} // namespace

Appearance::Mode Appearance::storedMode(const UserDefaults& defaults)
{
    const QString stored = defaults.value(modeKey).toString();
    if (stored == u"light")
        return Mode::light;
    if (stored == u"dark")
        return Mode::dark;
    return Mode::system;
}

void Appearance::storeMode(UserDefaults defaults, Mode mode, NotificationCenter& center)
{
    defaults.setValue(modeKey,
        mode == Mode::light      ? QStringLiteral("light")
            : mode == Mode::dark ? QStringLiteral("dark")
                                 : QStringLiteral("system"));
    center.post(didChangeNotification);
}

Appearance::Appearance(QObject* parent)
    : QObject(parent)
{
    const QByteArray forced = qgetenv("TOLVANE_APPEARANCE");
    if (!forced.isEmpty()) {
        m_forcedDark = forced == "dark";
    } else if (const std::optional<bool> dark = portalPrefersDark()) {
        m_desktopPrefersDark = *dark;
    } else {
        const QPalette palette = QApplication::palette();
        m_desktopPrefersDark
            = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    }
    if (!m_forcedDark) {
        QDBusConnection::sessionBus().connect(portalService, portalPath, settingsInterface,
            QStringLiteral("SettingChanged"), this, SLOT(onSettingChanged(QString, QString, QDBusVariant)));
    }
    m_isDark = m_forcedDark.value_or(m_desktopPrefersDark);
}

void Appearance::followChoice(const UserDefaults& defaults, NotificationCenter& center)
{
    m_mode = storedMode(defaults);
    update();
    center.addObserver(didChangeNotification, this, [this, defaults](const QVariant&) {
        m_mode = storedMode(defaults);
        update();
    });
}

void Appearance::apply()
{
    if (m_isDark) {
        QApplication::setStyle(new DarkContrastStyle);
        QApplication::setPalette(darkPalette());
    } else {
        QApplication::setPalette(QApplication::style()->standardPalette());
    }
}

void Appearance::onSettingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group != appearanceGroup || key != colorSchemeKey)
        return;
    // 0 is "no preference": light, as the desktops that send it mean.
    m_desktopPrefersDark = value.variant().toUInt() == 1;
    update();
}

void Appearance::update()
{
    const bool dark = m_forcedDark ? *m_forcedDark
        : m_mode == Mode::system   ? m_desktopPrefersDark
                                   : m_mode == Mode::dark;
    if (dark == m_isDark)
        return;
    m_isDark = dark;
    apply();
    Q_EMIT changed();
}
