#include "screens/settings/LocalAccountDialog.h"

#include "login/UserDomain.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUuid>

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
    m_error->hide();
    auto* form = new QFormLayout(this);
    //% "First name"
    form->addRow(qtTrId("user-settings-first-name-field"), m_firstName);
    //% "Last name"
    form->addRow(qtTrId("user-settings-last-name-field"), m_lastName);
    //% "E-mail"
    form->addRow(qtTrId("user-settings-email-field"), m_email);
    form->addRow(m_error);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    //% "Save"
    buttons->button(QDialogButtonBox::Ok)->setText(qtTrId("user-settings-save-button"));
    //% "Cancel"
    buttons->button(QDialogButtonBox::Cancel)->setText(qtTrId("user-settings-cancel-button"));
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &LocalAccountDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &LocalAccountDialog::reject);
}

UserEntity LocalAccountDialog::user() const
{
    UserEntity user;
    user.usrId = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    user.usrFirstName = m_firstName->text();
    user.usrLastName = m_lastName->text();
    user.usrEmail = m_email->text();
    user.usrIsGoogleAccount = false;
    return user;
}

void LocalAccountDialog::accept()
{
    const LoginResultEntity valid = UserDomain::validate(user());
    if (!valid.result) {
        m_error->setText(valid.firstMessage().value_or(QString()));
        m_error->show();
        return;
    }
    QDialog::accept();
}
