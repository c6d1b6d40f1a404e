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

// Daily tasks are kept per day; a move from the local stores takes every day they can hold.
const QDate allDaysFrom(1900, 1, 1);
const QDate allDaysTo(2200, 12, 31);

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

QString AccountMoveView::newLocalUserId(const UserDefaults& defaults)
{
    const QUuid owner = QUuid::fromString(defaults.value(localCopyOwnerKey).toString());
    return (owner.isNull() ? QUuid::createUuid() : owner).toString(QUuid::WithoutBraces).toUpper();
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
            const bool google = !offer.userId.isNull() && !offer.isLocal && offer.userId != m_movedInto;
            const bool offering = offer.isLocal && googleAvailable;
            if (google && offer.pendingFrom) {
                //% "Move to a Google account"
                setTitle(qtTrId("account-move-title"));
                // clang-format off
                //% "The data of your local account is not all on this Google account yet. Nothing was lost: finishing copies what is missing."
                // clang-format on
                m_explanation->setText(qtTrId("account-move-unfinished"));
                //% "Finish moving"
                m_move->setText(qtTrId("account-move-finish-button"));
            } else if (google) {
                //% "Keep a copy on this computer"
                setTitle(qtTrId("account-copy-title"));
                // clang-format off
                //% "Copies this account's projects, lists, tasks, logbook and the daily tasks of the last two years to this computer, encrypted. A local account set up here later starts with them."
                // clang-format on
                m_explanation->setText(qtTrId("account-copy-explanation"));
                //% "Copy to this computer"
                m_move->setText(qtTrId("account-copy-button"));
            } else if (offering) {
                setTitle(qtTrId("account-move-title"));
                // clang-format off
                //% "Sign in with Google and copy your projects, lists, tasks, daily tasks and logbook there. This computer keeps its copy."
                // clang-format on
                m_explanation->setText(qtTrId("account-move-explanation"));
                //% "Move to a Google account…"
                m_move->setText(qtTrId("account-move-button"));
            }
            setVisible(google || offering || !m_status->text().isEmpty());
            m_move->setVisible(google || offering);
            Q_EMIT refreshed();
        });
}

void AccountMoveView::start()
{
    if (m_control || m_offer.userId.isNull())
        return;
    if (!m_offer.isLocal) {
        if (m_offer.pendingFrom)
            copy(Direction::toGoogle, *m_offer.pendingFrom, m_offer.userId);
        else
            copy(Direction::toThisComputer, QUuid::fromString(newLocalUserId(m_services.userDefaults())),
                m_offer.userId);
        return;
    }
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
            copy(Direction::toGoogle, localUser, googleUser);
        });
}

void AccountMoveView::copy(Direction direction, const QUuid& localUser, const QUuid& googleUser)
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
    const bool toGoogle = direction == Direction::toGoogle;
    //% "Copying to your Google account…"
    //% "Copying to this computer…"
    m_status->setText(toGoogle ? qtTrId("account-move-copying") : qtTrId("account-copy-copying"));
    // The local stores are read whole; a backend is read day by day, so a copy from it takes the
    // daily tasks of the days around today, as exports do.
    const QDate today = QDate::currentDate();
    const QDate firstDay = toGoogle ? allDaysFrom : today.addYears(-2);
    const QDate lastDay = toGoogle ? allDaysTo : today.addYears(1);
    runAction(
        this, m_services.console(), QStringLiteral("AccountMoveView.copy"),
        [services = m_services, control = m_control, toGoogle, localUser, googleUser, firstDay, lastDay] {
            const AccountMove::Side local {repositoriesOf(services.tasksApplications(false)), localUser};
            const AccountMove::Side google {repositoriesOf(services.tasksApplications(true)), googleUser};
            return AccountMove(toGoogle ? local : google, toGoogle ? google : local, firstDay, lastDay).run(*control);
        },
        [this, toGoogle, localUser](const ResultEntity& result) {
            m_control.reset();
            setRunning(false);
            UserDefaults defaults = m_services.userDefaults();
            if (result.result) {
                const auto outcome = *result.dataAs<AccountMove::Outcome>();
                if (toGoogle) {
                    defaults.remove(pendingMoveKey);
                    m_offer.pendingFrom.reset();
                    m_movedInto = m_offer.userId;
                    m_move->hide();
                    // clang-format off
                    //% "Everything is on your Google account and was checked there: %1 items, %2 of them already there before. This computer keeps its copy."
                    // clang-format on
                    finish(true, qtTrId("account-move-done").arg(outcome.verified).arg(outcome.skipped));
                    m_services.notificationCenter().post(NotificationName::userAccountDidChange);
                } else {
                    defaults.setValue(localCopyOwnerKey, localUser.toString(QUuid::WithoutBraces));
                    //% "A copy of %1 items is on this computer and was checked. Copying again adds what is new."
                    finish(true, qtTrId("account-copy-done").arg(outcome.verified));
                }
                return;
            }
            if (toGoogle) {
                m_move->setText(qtTrId("account-move-finish-button"));
                m_move->show();
            }
            //% "What was copied stays; “Finish moving” copies the rest."
            //% "What was copied stays; copying again adds the rest."
            const QString next = toGoogle ? qtTrId("account-move-finish-hint") : qtTrId("account-copy-again-hint");
            //% "Stopped."
            const QString why = result.applicationMessage == AccountMove::cancelledMessage
                ? qtTrId("account-move-stopped")
                : result.firstMessage().value_or(QString());
            finish(false, why + QLatin1Char(' ') + next);
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
