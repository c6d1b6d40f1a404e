#include "screens/settings/SettingsButtonView.h"

#include "screens/common/Icons.h"

SettingsButtonView::SettingsButtonView(
    const char* titleKey, const QString& title, const QString& systemImage, Style style, QWidget* parent)
    : QPushButton(title, parent)
    , m_titleKey(QString::fromLatin1(titleKey))
    , m_title(title)
    , m_style(style)
{
    setObjectName(m_titleKey);
    if (!systemImage.isEmpty())
        setIcon(Icons::symbol(systemImage));
    setDefault(style.isPrimary);
    setAutoDefault(false);
    if (style.isPrimary) {
        setStyleSheet(QStringLiteral("QPushButton { background: #3E8BFF; color: white; border-radius: 6px; "
                                     "padding: 6px 14px; font-weight: bold; }"
                                     "QPushButton:disabled { background: #9DBEF0; }"));
    } else if (style.isDestructive) {
        setStyleSheet(QStringLiteral("QPushButton { color: #E5484D; padding: 6px 14px; }"
                                     "QPushButton:disabled { color: #F0A3A5; }"));
    }
}

void SettingsButtonView::setLoading(bool loading)
{
    m_isLoading = loading;
    refresh();
}

void SettingsButtonView::setDisabled(bool disabled)
{
    m_isDisabled = disabled;
    refresh();
}

void SettingsButtonView::refresh()
{
    // An ellipsis rather than a spinner: the text stays readable and the width barely changes.
    setText(m_isLoading ? m_title + QStringLiteral("…") : m_title);
    setEnabled(!m_isLoading && !m_isDisabled);
}
