#include "screens/common/LazyMenuButton.h"

#include <QMenu>

LazyMenuButton::LazyMenuButton(Fill fill, QWidget* parent)
    : QToolButton(parent)
    , m_fill(std::move(fill))
{
    setAutoRaise(true);
    setPopupMode(QToolButton::InstantPopup);
    connect(this, &QToolButton::pressed, this, [this] {
        if (!menu()) {
            builtMenu();
            showMenu();
        }
    });
}

QMenu* LazyMenuButton::builtMenu()
{
    if (!menu()) {
        auto* built = new QMenu(this);
        m_fill(built);
        setMenu(built);
    }
    return menu();
}
