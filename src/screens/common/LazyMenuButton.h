#pragma once

#include <QToolButton>

#include <functional>

class QMenu;

// A tool button whose menu is built the first time it is needed: rows carry one each, and
// building hundreds of menus nobody opens would slow every reload down.
class LazyMenuButton final : public QToolButton {
    Q_OBJECT

public:
    using Fill = std::function<void(QMenu* menu)>;

    LazyMenuButton(Fill fill, QWidget* parent = nullptr);

    // The menu, built now if it was not yet.
    QMenu* builtMenu();

private:
    Fill m_fill;
};
