#include "screens/common/Appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

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

Appearance::Appearance(QObject* parent)
    : QObject(parent)
{
    const QByteArray forced = qgetenv("TOLVANE_APPEARANCE");
    if (!forced.isEmpty()) {
        m_isDark = forced == "dark";
        return;
    }
    if (const std::optional<bool> dark = portalPrefersDark()) {
        m_isDark = *dark;
    } else {
        const QPalette palette = QApplication::palette();
        m_isDark = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    }
    QDBusConnection::sessionBus().connect(portalService, portalPath, settingsInterface,
        QStringLiteral("SettingChanged"), this, SLOT(onSettingChanged(QString, QString, QDBusVariant)));
}

void Appearance::apply()
{
    if (m_isDark) {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        QApplication::setPalette(darkPalette());
    } else {
        QApplication::setPalette(QApplication::style()->standardPalette());
    }
}

void Appearance::onSettingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group != appearanceGroup || key != colorSchemeKey)
        return;
    setDark(value.variant().toUInt() == 1);
}

void Appearance::setDark(bool dark)
{
    if (dark == m_isDark)
        return;
    m_isDark = dark;
    apply();
    Q_EMIT changed();
}
