#include "screens/settings/UserProfileChipView.h"

#include "screens/common/ActionRunner.h"
#include "screens/common/AppServices.h"
#include "screens/common/Icons.h"
#include "screens/settings/AccountMoveView.h"
#include "screens/settings/LocalAccountDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>

UserProfileChipView::UserProfileChipView(const AppServices& services, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_avatar(new QLabel(this))
    , m_name(new QLabel(this))
    //% "Set up your account"
    , m_setUp(new QPushButton(qtTrId("user-settings-setup-chooser-title"), this))
    , m_menuButton(new QToolButton(this))
{
    setObjectName(QStringLiteral("profileChip"));
    m_avatar->setFixedSize(32, 32);
    m_avatar->setAlignment(Qt::AlignCenter);
    m_avatar->setStyleSheet(
        QStringLiteral("border-radius: 16px; background: #3E8BFF; color: white; font-weight: bold;"));
    m_name->setObjectName(QStringLiteral("profileName"));
    m_name->setWordWrap(true);
    m_name->setTextFormat(Qt::PlainText);
    m_setUp->setObjectName(QStringLiteral("setUpAccount"));
    m_setUp->setCursor(Qt::PointingHandCursor);
    // Google is a choice only when configured; otherwise the local account is the way in.
    connect(m_setUp, &QPushButton::clicked, this, [this] {
        if (m_services.isGoogleSignInAvailable())
            m_menuButton->showMenu();
        else
            setUpLocalAccount();
    });
    m_menuButton->setObjectName(QStringLiteral("profileMenu"));
    m_menuButton->setIcon(Icons::symbol(QStringLiteral("gearshape")));
    m_menuButton->setAutoRaise(true);
    m_menuButton->setPopupMode(QToolButton::InstantPopup);
    m_menuButton->setMenu(new QMenu(m_menuButton));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(m_avatar);
    layout->addWidget(m_name, 1);
    layout->addWidget(m_setUp, 1);
    layout->addWidget(m_menuButton);
    // A rename in the settings, a sign-in or a sign-out anywhere shows here at once.
    m_services.notificationCenter().addObserver(
        NotificationName::userAccountDidChange, this, [this](const QVariant&) { reload(); });
    render();
    reload();
}

void UserProfileChipView::reload()
{
    const LoginApplication login = m_services.loginApplication();
    runAsync(
        this, [login] { return login.getCurrentUser(); },
        [this](const LoginResultEntity& current) {
            const UserEntity* user = current.dataAs<UserEntity>();
            m_user = user ? std::optional(*user) : std::nullopt;
            render();
        });
}

void UserProfileChipView::render()
{
    m_name->setVisible(m_user.has_value());
    m_setUp->setVisible(!m_user.has_value());
    QMenu* menu = m_menuButton->menu();
    menu->clear();
    if (m_user) {
        const QString initials = m_user->usrFirstName.left(1) + m_user->usrLastName.left(1);
        m_avatar->setText(initials.toUpper());
        m_name->setText(m_user->usrFirstName + QLatin1Char(' ') + m_user->usrLastName);
        m_name->setToolTip(m_user->usrEmail);
        //% "Settings"
        menu->addAction(Icons::symbol(QStringLiteral("gearshape")), qtTrId("user-settings-screen-title"), this,
            [this] { m_services.notificationCenter().post(NotificationName::showUserSettings); });
        //% "Sign out"
        menu->addAction(qtTrId("user-settings-logout-button"), this, &UserProfileChipView::signOut);
    } else {
        m_avatar->setText(QStringLiteral("?"));
        m_name->clear();
        m_name->setToolTip(QString());
        menu->addAction(Icons::symbol(QStringLiteral("person.crop.circle")), qtTrId("user-settings-setup-local-button"),
                this, &UserProfileChipView::setUpLocalAccount)
            ->setObjectName(QStringLiteral("setUpLocalAccount"));
        if (m_services.isGoogleSignInAvailable()) {
            //% "Sign in with Google"
            QAction* google = menu->addAction(
                qtTrId("user-settings-google-sign-in-button"), this, &UserProfileChipView::signInWithGoogle);
            google->setObjectName(QStringLiteral("signInWithGoogle"));
            google->setEnabled(!m_isSigningInWithGoogle);
        }
        if (m_hasGoogleSignInError) {
            //% "Google sign-in did not work. Please try again."
            menu->addAction(qtTrId("user-settings-google-sign-in-error-text"))->setEnabled(false);
        }
    }
}

void UserProfileChipView::setUpLocalAccount()
{
    LocalAccountDialog dialog(this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const LoginApplication login = m_services.loginApplication();
    UserEntity user = dialog.user();
    user.usrId = AccountMoveView::newLocalUserId(m_services.userDefaults());
    runAction(
        this, m_services.console(), QStringLiteral("UserSettingsController.save"),
        [login, user] { return login.saveUser(user); },
        [this](const ResultEntity& saved) {
            if (saved.result)
                accountChanged();
            else
                QMessageBox::warning(this, window()->windowTitle(), saved.firstMessage().value_or(QString()));
        });
}

void UserProfileChipView::signInWithGoogle()
{
    m_isSigningInWithGoogle = true;
    m_hasGoogleSignInError = false;
    render();
    const LoginApplication login = m_services.loginApplication();
    runAction(
        this, m_services.console(), QStringLiteral("UserProfileChipView.signInWithGoogle"),
        [login] { return login.signInWithGoogle(nullptr); },
        [this](const ResultEntity& signedIn) {
            m_isSigningInWithGoogle = false;
            m_hasGoogleSignInError = !signedIn.result;
            if (signedIn.result)
                accountChanged();
            else
                render();
        });
}

void UserProfileChipView::signOut()
{
    QMessageBox box(QMessageBox::Question, window()->windowTitle(),
        //% "Sign out of Tolvane?"
        qtTrId("user-settings-logout-confirmation-title"), QMessageBox::NoButton, this);
    box.setObjectName(QStringLiteral("confirmation"));
    //% "Sign out"
    QPushButton* confirm = box.addButton(qtTrId("user-settings-logout-confirm-button"), QMessageBox::DestructiveRole);
    //% "Cancel"
    QPushButton* cancel = box.addButton(qtTrId("user-settings-logout-cancel-button"), QMessageBox::RejectRole);
    box.setDefaultButton(cancel);
    box.exec();
    if (box.clickedButton() != confirm)
        return;
    const LoginApplication login = m_services.loginApplication();
    runAsync(
        this, [login] { return login.signOut(); }, [this](const LoginResultEntity&) { accountChanged(); });
}

void UserProfileChipView::accountChanged()
{
    // The observer above reloads this chip with everything else.
    m_services.notificationCenter().post(NotificationName::userAccountDidChange);
}
