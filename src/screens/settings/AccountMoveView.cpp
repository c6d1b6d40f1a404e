#include "screens/settings/AccountMoveView.h"

#include "platform/NotificationCenter.h"
#include "screens/common/ActionRunner.h"
#include "transfer/AccountMove.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// Daily tasks are kept per day; a move takes every day the local stores can hold.
const QDate firstDay(1900, 1, 1);
const QDate lastDay(2200, 12, 31);

TasksRepositories repositoriesOf(const TaskResultEntity& made)
{
    const auto* applications = made.dataAs<TasksApplicationFactory::Applications>();
    if (!applications)
        return {};
    return {applications->projects.projectRepository, applications->taskLists.taskListRepository,
        applications->tasks.taskRepository, applications->dailyTasks.dailyTaskRepository,
        applications->bitacora.bitacoraRepository};
}

} // namespace

AccountMoveView::AccountMoveView(const AppServices& services, QWidget* parent)
    : QGroupBox(parent)
    , m_services(services)
    , m_explanation(new QLabel(this))
    , m_move(new QPushButton(this))
    , m_progress(new QProgressBar(this))
    , m_cancel(new QPushButton(qtTrId("data-settings-cancel"), this))
    , m_status(new QLabel(this))
{
    setObjectName(QStringLiteral("accountMove"));
    //% "Move to a Google account"
    setTitle(qtTrId("account-move-title"));
    m_explanation->setWordWrap(true);
    m_move->setObjectName(QStringLiteral("moveAccount"));
    m_progress->setObjectName(QStringLiteral("moveProgress"));
    m_cancel->setObjectName(QStringLiteral("cancelMove"));
    m_status->setObjectName(QStringLiteral("moveStatus"));
    m_status->setWordWrap(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_progress, 1);
    buttons->addWidget(m_cancel);
    buttons->addStretch();
    buttons->addWidget(m_move);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_explanation);
    layout->addLayout(buttons);
    layout->addWidget(m_status);
    setRunning(false);
    hide();

    connect(m_move, &QPushButton::clicked, this, &AccountMoveView::start);
    connect(m_cancel, &QPushButton::clicked, this, &AccountMoveView::cancel);
    m_services.notificationCenter().addObserver(
        NotificationName::userAccountDidChange, this, [this](const QVariant&) { refresh(); });
    refresh();
}

void AccountMoveView::refresh()
{
    const bool googleAvailable = m_services.isGoogleSignInAvailable();
    runAsync(
        this,
        [services = m_services] {
            const LoginResultEntity current = services.loginApplication().getCurrentUser();
            const UserEntity* user = current.dataAs<UserEntity>();
            Offer offer;
            if (!user)
                return offer;
            offer.isLocal = !user->usrIsGoogleAccount;
            offer.userId = QUuid::fromString(user->usrId);
            const QVariant pending = services.userDefaults().value(pendingMoveKey);
            if (pending.isValid())
                offer.pendingFrom = QUuid::fromString(pending.toString());
            return offer;
        },
        [this, googleAvailable](const Offer& offer) {
            if (m_control)
                return;
            m_offer = offer;
            const bool finishing = !offer.isLocal && !offer.userId.isNull() && offer.pendingFrom;
            const bool offering = offer.isLocal && googleAvailable;
            if (finishing) {
                //% "The data of your local account is not all on this Google account yet. Nothing was lost: finishing
                //copies what is missing."
                m_explanation->setText(qtTrId("account-move-unfinished"));
                //% "Finish moving"
                m_move->setText(qtTrId("account-move-finish-button"));
            } else if (offering) {
                //% "Sign in with Google and copy your projects, lists, tasks, daily tasks and logbook there. This
                //computer keeps its copy."
                m_explanation->setText(qtTrId("account-move-explanation"));
                //% "Move to a Google account…"
                m_move->setText(qtTrId("account-move-button"));
            }
            setVisible(finishing || offering || !m_status->text().isEmpty());
            m_move->setVisible(finishing || offering);
            Q_EMIT refreshed();
        });
}

void AccountMoveView::start()
{
    if (m_control)
        return;
    if (!m_offer.isLocal && m_offer.pendingFrom) {
        copy(*m_offer.pendingFrom, m_offer.userId);
        return;
    }
    if (!m_offer.isLocal)
        return;
    QMessageBox box(QMessageBox::Question, qtTrId("account-move-title"),
        //% "Copy everything to a Google account?"
        qtTrId("account-move-confirmation-title"), QMessageBox::NoButton, this);
    box.setObjectName(QStringLiteral("accountMoveConfirmation"));
    box.setInformativeText(qtTrId("account-move-explanation"));
    //% "Sign in and copy"
    QPushButton* confirm = box.addButton(qtTrId("account-move-confirm-button"), QMessageBox::AcceptRole);
    QPushButton* cancel = box.addButton(qtTrId("data-settings-cancel"), QMessageBox::RejectRole);
    box.setDefaultButton(cancel);
    box.exec();
    if (box.clickedButton() == confirm)
        signInAndCopy(m_offer.userId);
}

void AccountMoveView::signInAndCopy(const QUuid& localUser)
{
    // Remembered before the sign-in replaces the local user: from now on, however this ends, the
    // move can be finished.
    UserDefaults(m_services.userDefaults()).setValue(pendingMoveKey, localUser.toString(QUuid::WithoutBraces));
    setRunning(true);
    m_progress->setRange(0, 0);
    //% "Signing in with Google…"
    m_status->setText(qtTrId("account-move-signing-in"));
    const LoginApplication login = m_services.loginApplication();
    runAction(
        this, m_services.console(), QStringLiteral("AccountMoveView.signInWithGoogle"),
        [login] {
            const LoginResultEntity signedIn = login.signInWithGoogle(nullptr);
            return signedIn.result ? login.getCurrentUser() : signedIn;
        },
        [this, localUser](const ResultEntity& signedIn) {
            const auto* google = signedIn.dataAs<UserEntity>();
            if (!signedIn.result || !google) {
                UserDefaults(m_services.userDefaults()).remove(pendingMoveKey);
                setRunning(false);
                //% "Google sign-in did not work, so nothing was copied: %1"
                finish(false, qtTrId("account-move-sign-in-failed").arg(signedIn.firstMessage().value_or(QString())));
                return;
            }
            const QUuid googleUser = QUuid::fromString(google->usrId);
            m_offer = {false, googleUser, localUser};
            m_services.notificationCenter().post(NotificationName::userAccountDidChange);
            copy(localUser, googleUser);
        });
}

void AccountMoveView::copy(const QUuid& localUser, const QUuid& googleUser)
{
    QPointer<QProgressBar> progress = m_progress;
    m_control = std::make_shared<TransferControl>([progress](qint64 done, qint64 total) {
        QMetaObject::invokeMethod(progress, [progress, done, total] {
            if (!progress)
                return;
            progress->setMaximum(int(std::min<qint64>(total, INT_MAX)));
            progress->setValue(int(std::min<qint64>(done, INT_MAX)));
        });
    });
    setRunning(true);
    m_progress->setRange(0, 0);
    //% "Copying to your Google account…"
    m_status->setText(qtTrId("account-move-copying"));
    runAction(
        this, m_services.console(), QStringLiteral("AccountMoveView.copy"),
        [services = m_services, control = m_control, localUser, googleUser] {
            const AccountMove move({repositoriesOf(services.tasksApplications(false)), localUser},
                {repositoriesOf(services.tasksApplications(true)), googleUser}, firstDay, lastDay);
            return move.run(*control);
        },
        [this](const ResultEntity& result) {
            m_control.reset();
            setRunning(false);
            if (result.result) {
                const auto outcome = *result.dataAs<AccountMove::Outcome>();
                UserDefaults(m_services.userDefaults()).remove(pendingMoveKey);
                m_offer.pendingFrom.reset();
                m_move->hide();
                //% "Everything is on your Google account and was checked there: %1 items, %2 of them already there
                //before. This computer keeps its copy."
                finish(true, qtTrId("account-move-done").arg(outcome.verified).arg(outcome.skipped));
                m_services.notificationCenter().post(NotificationName::userAccountDidChange);
                return;
            }
            m_move->setText(qtTrId("account-move-finish-button"));
            m_move->show();
            if (result.applicationMessage == AccountMove::cancelledMessage) {
                //% "Stopped. What was copied stays; “Finish moving” copies the rest."
                finish(false, qtTrId("account-move-cancelled"));
            } else {
                //% "The move stopped: %1 What was copied stays; “Finish moving” copies the rest."
                finish(false, qtTrId("account-move-failed").arg(result.firstMessage().value_or(QString())));
            }
        });
}

void AccountMoveView::cancel()
{
    if (m_control)
        m_control->cancel();
}

void AccountMoveView::finish(bool succeeded, const QString& message)
{
    m_status->setText(message);
    show();
    Q_EMIT moveFinished(succeeded, message);
}

void AccountMoveView::setRunning(bool running)
{
    m_progress->setVisible(running);
    m_cancel->setVisible(running && m_control);
    m_move->setEnabled(!running);
}
