#include "screens/settings/LocalAccountDialog.h"

#include "screens/settings/LocalAccountCheck.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUuid>
#include <QVBoxLayout>

LocalAccountDialog::LocalAccountDialog(QWidget* parent)
    : QDialog(parent)
    , m_firstName(new QLineEdit(this))
    , m_lastName(new QLineEdit(this))
    , m_email(new QLineEdit(this))
    , m_error(new QLabel(this))
{
    setObjectName(QStringLiteral("localAccountDialog"));
    //% "Use Tolvane on this computer"
    setWindowTitle(qtTrId("user-settings-setup-local-button"));
    m_firstName->setObjectName(QStringLiteral("firstName"));
    m_lastName->setObjectName(QStringLiteral("lastName"));
    m_email->setObjectName(QStringLiteral("email"));
    m_error->setObjectName(QStringLiteral("accountError"));
    m_error->setStyleSheet(QStringLiteral("color: #E5484D;"));
    m_error->setWordWrap(true);
    m_error->hide();
    m_email->setPlaceholderText(QStringLiteral("name@example.com"));
    // The window manager may cut the title short: the dialog says what it is for itself.
    auto* heading = new QLabel(windowTitle(), this);
    QFont headingFont = heading->font();
    headingFont.setBold(true);
    headingFont.setPointSizeF(headingFont.pointSizeF() * 1.2);
    heading->setFont(headingFont);
    heading->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setSpacing(12);
    layout->addWidget(heading);
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    layout->addLayout(form);
    //% "First name"
    form->addRow(qtTrId("user-settings-first-name-field"), m_firstName);
    //% "Last name"
    form->addRow(qtTrId("user-settings-last-name-field"), m_lastName);
    //% "E-mail"
    form->addRow(qtTrId("user-settings-email-field"), m_email);
    layout->addWidget(m_error);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    //% "Save"
    buttons->button(QDialogButtonBox::Ok)->setText(qtTrId("user-settings-save-button"));
    //% "Cancel"
    buttons->button(QDialogButtonBox::Cancel)->setText(qtTrId("user-settings-cancel-button"));
    layout->addWidget(buttons);
    setMinimumWidth(440);
    connect(buttons, &QDialogButtonBox::accepted, this, &LocalAccountDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &LocalAccountDialog::reject);
}

UserEntity LocalAccountDialog::user() const
{
    UserEntity user;
    user.usrFirstName = m_firstName->text();
    user.usrLastName = m_lastName->text();
    user.usrEmail = m_email->text().trimmed();
    user.usrIsGoogleAccount = false;
    return user;
}

void LocalAccountDialog::accept()
{
    if (const std::optional<QString> problem = LocalAccountCheck::problem(user())) {
        m_error->setText(*problem);
        m_error->show();
        return;
    }
    QDialog::accept();
}
