#include "screens/settings/AccountSettingsView.h"

#include "screens/common/ActionRunner.h"
#include "screens/common/AppServices.h"
#include "screens/settings/AccountMoveView.h"
#include "screens/settings/LocalAccountCheck.h"
#include "screens/settings/SettingsButtonView.h"
#include "screens/settings/UserSettingsController.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QStackedWidget>
#include <QUuid>
#include <QVBoxLayout>

namespace {

QLabel* heading(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.2);
    label->setFont(font);
    return label;
}

QLineEdit* field(const QString& objectName, QWidget* parent)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(objectName);
    return edit;
}

} // namespace

AccountSettingsView::AccountSettingsView(const AppServices& services, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_pages(new QStackedWidget(this))
{
    setObjectName(QStringLiteral("accountSettings"));
    m_chooser = makeChooser();
    m_localSetup = makeLocalSetup();
    m_account = makeAccount();
    m_pages->addWidget(m_chooser);
    m_pages->addWidget(m_localSetup);
    m_pages->addWidget(m_account);
    m_error = new QLabel(this);
    m_error->setObjectName(QStringLiteral("accountError"));
    m_error->setStyleSheet(QStringLiteral("color: #E5484D;"));
    m_error->setWordWrap(true);
    m_error->hide();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    layout->addWidget(m_error);
    layout->addStretch();

    // The chip and the settings change the same account: either one's change shows in both.
    m_services.notificationCenter().addObserver(
        NotificationName::userAccountDidChange, this, [this](const QVariant&) { reload(); });
    render();
    reload();
}

QWidget* AccountSettingsView::makeChooser()
{
    auto* page = new QWidget(this);
    page->setObjectName(QStringLiteral("accountChooser"));
    auto* layout = new QVBoxLayout(page);
    //% "Set up your account"
    layout->addWidget(heading(qtTrId("user-settings-setup-chooser-title"), page));
    if (m_services.isGoogleSignInAvailable()) {
        //% "Sign in with Google"
        m_googleButton = new SettingsButtonView("user-settings-google-sign-in-button",
            qtTrId("user-settings-google-sign-in-button"), QString(), {.isPrimary = true}, page);
        connect(m_googleButton, &QPushButton::clicked, this, &AccountSettingsView::signInWithGoogle);
        layout->addWidget(m_googleButton);
        //% "Google sign-in did not work. Please try again."
        m_googleError = new QLabel(qtTrId("user-settings-google-sign-in-error-text"), page);
        m_googleError->setObjectName(QStringLiteral("googleSignInError"));
        m_googleError->setStyleSheet(QStringLiteral("color: #E5484D;"));
        m_googleError->setWordWrap(true);
        layout->addWidget(m_googleError);
    }
    //% "Use Tolvane on this computer"
    auto* local = new SettingsButtonView("user-settings-setup-local-button", qtTrId("user-settings-setup-local-button"),
        QStringLiteral("person.crop.circle"), {}, page);
    connect(local, &QPushButton::clicked, this, [this] {
        m_hasSelectedLocalSetup = true;
        render();
    });
    layout->addWidget(local);
    layout->addStretch();
    return page;
}

QWidget* AccountSettingsView::makeLocalSetup()
{
    auto* page = new QWidget(this);
    page->setObjectName(QStringLiteral("localSetup"));
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(heading(qtTrId("user-settings-setup-local-button"), page));
    auto* form = new QFormLayout;
    m_setupFirstName = field(QStringLiteral("setupFirstName"), page);
    m_setupLastName = field(QStringLiteral("setupLastName"), page);
    m_setupEmail = field(QStringLiteral("setupEmail"), page);
    //% "First name"
    form->addRow(qtTrId("user-settings-first-name-field"), m_setupFirstName);
    //% "Last name"
    form->addRow(qtTrId("user-settings-last-name-field"), m_setupLastName);
    //% "E-mail"
    form->addRow(qtTrId("user-settings-email-field"), m_setupEmail);
    layout->addLayout(form);
    auto* buttons = new QHBoxLayout;
    //% "Back"
    auto* back = new SettingsButtonView("user-settings-back-to-chooser-button",
        qtTrId("user-settings-back-to-chooser-button"), QStringLiteral("chevron.left"), {}, page);
    //% "Save"
    auto* create = new SettingsButtonView(
        "user-settings-save-button", qtTrId("user-settings-save-button"), QString(), {.isPrimary = true}, page);
    create->setObjectName(QStringLiteral("createLocalAccount"));
    buttons->addWidget(back);
    buttons->addStretch();
    buttons->addWidget(create);
    layout->addLayout(buttons);
    connect(back, &QPushButton::clicked, this, [this] {
        m_hasSelectedLocalSetup = false;
        m_error->hide();
        render();
    });
    connect(create, &QPushButton::clicked, this, [this] {
        UserEntity user;
        user.usrId = AccountMoveView::newLocalUserId(m_services.userDefaults());
        user.usrFirstName = m_setupFirstName->text();
        user.usrLastName = m_setupLastName->text();
        user.usrEmail = m_setupEmail->text().trimmed();
        user.usrIsGoogleAccount = false;
        saveUser(user);
    });
    return page;
}

QWidget* AccountSettingsView::makeAccount()
{
    auto* page = new QWidget(this);
    page->setObjectName(QStringLiteral("accountDetails"));
    auto* layout = new QVBoxLayout(page);
    m_kind = new QLabel(page);
    m_kind->setObjectName(QStringLiteral("accountKind"));
    m_kind->setEnabled(false);
    layout->addWidget(m_kind);
    auto* form = new QFormLayout;
    m_firstName = field(QStringLiteral("firstName"), page);
    m_lastName = field(QStringLiteral("lastName"), page);
    m_email = field(QStringLiteral("email"), page);
    form->addRow(qtTrId("user-settings-first-name-field"), m_firstName);
    form->addRow(qtTrId("user-settings-last-name-field"), m_lastName);
    form->addRow(qtTrId("user-settings-email-field"), m_email);
    layout->addLayout(form);
    auto* buttons = new QHBoxLayout;
    m_logoutButton = new SettingsButtonView(
        "user-settings-logout-button", qtTrId("user-settings-logout-button"), QString(), {.isDestructive = true}, page);
    //% "Delete local account"
    m_deleteButton = new SettingsButtonView("user-settings-delete-local-account-button",
        qtTrId("user-settings-delete-local-account-button"), QStringLiteral("trash"), {.isDestructive = true}, page);
    m_saveButton = new SettingsButtonView(
        "user-settings-save-button", qtTrId("user-settings-save-button"), QString(), {.isPrimary = true}, page);
    buttons->addWidget(m_logoutButton);
    buttons->addWidget(m_deleteButton);
    buttons->addStretch();
    buttons->addWidget(m_saveButton);
    layout->addLayout(buttons);
    connect(m_saveButton, &QPushButton::clicked, this, [this] {
        if (!m_user)
            return;
        UserEntity edited = *m_user;
        edited.usrFirstName = m_firstName->text();
        edited.usrLastName = m_lastName->text();
        // A Google account's address is Google's; a local one's is the user's to correct.
        if (!edited.usrIsGoogleAccount)
            edited.usrEmail = m_email->text().trimmed();
        saveUser(edited);
    });
    connect(m_logoutButton, &QPushButton::clicked, this, &AccountSettingsView::signOut);
    connect(m_deleteButton, &QPushButton::clicked, this, &AccountSettingsView::signOut);
    return page;
}

void AccountSettingsView::reload()
{
    m_isLoading = true;
    const LoginApplication login = m_services.loginApplication();
    runAsync(
        this, [login] { return login.getCurrentUser(); },
        [this](const LoginResultEntity& current) {
            const UserEntity* user = current.dataAs<UserEntity>();
            m_user = user ? std::optional(*user) : std::nullopt;
            if (m_user) {
                m_hasSelectedLocalSetup = false;
                m_firstName->setText(m_user->usrFirstName);
                m_lastName->setText(m_user->usrLastName);
                m_email->setText(m_user->usrEmail);
            }
            m_isLoading = false;
            render();
            Q_EMIT reloaded();
        });
}

void AccountSettingsView::render()
{
    if (m_user) {
        m_pages->setCurrentWidget(m_account);
        const bool google = m_user->usrIsGoogleAccount;
        //% "Signed in with Google"
        //% "Local account: your data stays encrypted on this computer"
        m_kind->setText(
            google ? qtTrId("user-settings-google-account-text") : qtTrId("user-settings-local-account-text"));
        // Signing out of a local account forgets it, so it is offered under its real name.
        m_logoutButton->setVisible(google);
        m_deleteButton->setVisible(!google);
        // Read-only shows as plain text, not as a field that ignores the keyboard.
        m_email->setReadOnly(google);
        m_email->setFrame(!google);
        m_email->setStyleSheet(google ? QStringLiteral("background: transparent;") : QString());
    } else {
        m_pages->setCurrentWidget(m_hasSelectedLocalSetup ? m_localSetup : m_chooser);
    }
    if (m_googleButton) {
        m_googleButton->setLoading(m_isSigningInWithGoogle);
        m_googleError->setVisible(m_hasGoogleSignInError);
    }
}

void AccountSettingsView::saveUser(const UserEntity& user)
{
    m_error->hide();
    // The names go to the account store, whose refusal is recorded; the address is checked here.
    if (!user.usrIsGoogleAccount) {
        if (const std::optional<QString> problem = LocalAccountCheck::emailProblem(user.usrEmail)) {
            m_error->setText(*problem);
            m_error->show();
            return;
        }
    }
    const UserSettingsController controller(m_services.loginApplication(), m_services.console());
    m_saveButton->setLoading(true);
    controller.save(this, user, [this](const LoginResultEntity& saved) {
        m_saveButton->setLoading(false);
        if (!saved.result) {
            m_error->setText(saved.firstMessage().value_or(QString()));
            m_error->show();
            return;
        }
        accountChanged();
    });
}

void AccountSettingsView::signInWithGoogle()
{
    m_isSigningInWithGoogle = true;
    m_hasGoogleSignInError = false;
    render();
    const LoginApplication login = m_services.loginApplication();
    runAction(
        this, m_services.console(), QStringLiteral("UserSettingsController.signInWithGoogle"),
        [login] { return login.signInWithGoogle(nullptr); },
        [this](const ResultEntity& signedIn) {
            m_isSigningInWithGoogle = false;
            m_hasGoogleSignInError = !signedIn.result;
            render();
            if (signedIn.result)
                accountChanged();
        });
}

void AccountSettingsView::signOut()
{
    if (!m_user)
        return;
    const bool confirmedChange = m_user->usrIsGoogleAccount
        ? confirmed(qtTrId("user-settings-logout-confirmation-title"),
            //% "Your projects stay on the server; sign in again to see them."
            qtTrId("user-settings-logout-confirmation-message"), qtTrId("user-settings-logout-confirm-button"))
        : confirmed(
            //% "Delete the local account?"
            qtTrId("user-settings-delete-local-account-confirmation-title"),
            //% "Tolvane forgets this account. A new local account starts with no projects."
            qtTrId("user-settings-delete-local-account-confirmation-message"),
            //% "Delete"
            qtTrId("user-settings-delete-local-account-confirm-button"));
    if (!confirmedChange)
        return;
    const LoginApplication login = m_services.loginApplication();
    runAsync(
        this, [login] { return login.signOut(); }, [this](const LoginResultEntity&) { accountChanged(); });
}

bool AccountSettingsView::confirmed(const QString& title, const QString& message, const QString& confirmText)
{
    QMessageBox box(QMessageBox::Question, title, title, QMessageBox::NoButton, this);
    box.setObjectName(QStringLiteral("confirmation"));
    box.setInformativeText(message);
    QPushButton* confirm = box.addButton(confirmText, QMessageBox::DestructiveRole);
    QPushButton* cancel = box.addButton(qtTrId("user-settings-logout-cancel-button"), QMessageBox::RejectRole);
    box.setDefaultButton(cancel);
    box.exec();
    return box.clickedButton() == confirm;
}

void AccountSettingsView::accountChanged()
{
    // Our own observer reloads this view along with every other screen.
    m_services.notificationCenter().post(NotificationName::userAccountDidChange);
}
