#pragma once

#include <QWidget>

// The logo with a line of text under it, centred: what a pane shows when it has nothing to show.
class LogoPlaceholderView final : public QWidget {
    Q_OBJECT

public:
    // The text's label is named textObjectName (for tests); the logo's is "QuorvelLogo".
    LogoPlaceholderView(const QString& text, const QString& textObjectName, int logoSize, QWidget* parent = nullptr);
};
