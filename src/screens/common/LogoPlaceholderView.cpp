#include "screens/common/LogoPlaceholderView.h"

#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

LogoPlaceholderView::LogoPlaceholderView(
    const QString& text, const QString& textObjectName, int logoSize, QWidget* parent)
    : QWidget(parent)
{
    auto* logo = new QLabel(this);
    logo->setObjectName(QStringLiteral("QuorvelLogo"));
    logo->setPixmap(QIcon(QStringLiteral(":/icons/QuorvelLogo.svg")).pixmap(logoSize, logoSize));
    logo->setAlignment(Qt::AlignCenter);
    auto* hint = new QLabel(text, this);
    hint->setObjectName(textObjectName);
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    hint->setEnabled(false);
    auto* layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addWidget(logo);
    layout->addWidget(hint);
    layout->addStretch();
}
