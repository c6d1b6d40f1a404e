#pragma once

#include <QPushButton>

// The settings' one button style: a primary action stands out, a destructive one is red, and a
// loading button shows that its action is still running and cannot be pressed again.
class SettingsButtonView final : public QPushButton {
    Q_OBJECT

public:
    struct Style {
        bool isPrimary = false;
        bool isDestructive = false;
    };

    // titleKey is the text id, kept as the object name so tests and styles can find the button.
    SettingsButtonView(
        const char* titleKey, const QString& title, const QString& systemImage, Style style, QWidget* parent = nullptr);

    QString titleKey() const { return m_titleKey; }
    bool isPrimary() const { return m_style.isPrimary; }
    bool isDestructive() const { return m_style.isDestructive; }
    bool isLoading() const { return m_isLoading; }
    void setLoading(bool loading);
    void setDisabled(bool disabled);

private:
    void refresh();

    QString m_titleKey;
    QString m_title;
    Style m_style;
    bool m_isLoading = false;
    bool m_isDisabled = false;
};
