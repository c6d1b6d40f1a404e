#pragma once

#include "screens/common/AppServices.h"
#include "transfer/TransferControl.h"

#include <QGroupBox>
#include <QUuid>

#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;

// Moving data between a local account and a Google account. A local user (when Google sign-in
// is available) signs in after a confirmation, and everything is copied across with its ids and
// checked on the other side; this computer's copy is never deleted. Until the check has passed,
// the Google account is offered to finish the move, which copies only what is still missing. A
// Google user may keep a copy on this computer, which a local account set up here later owns.
class AccountMoveView final : public QGroupBox {
    Q_OBJECT

public:
    explicit AccountMoveView(const AppServices& services, QWidget* parent = nullptr);

    // The local user whose data is on its way to the signed-in Google account.
    static inline const QString pendingMoveKey = QStringLiteral("pendingAccountMoveFrom");
    // The owner of the copy of a Google account's data kept on this computer.
    static inline const QString localCopyOwnerKey = QStringLiteral("localCopyOwner");

    // The id of a new local account: the owner of a kept copy, so that the copy is its data, or a
    // new one.
    static QString newLocalUserId(const UserDefaults& defaults);

    // What the button does: ask, sign in and copy; finish a move that stopped; or copy a Google
    // account's data to this computer.
    void start();
    void cancel();

Q_SIGNALS:
    // The offer was worked out again for the current user.
    void refreshed();
    void moveFinished(bool succeeded, const QString& message);

private:
    struct Offer {
        bool isLocal = false;
        QUuid userId;
        std::optional<QUuid> pendingFrom;
    };
    enum class Direction { toGoogle, toThisComputer };

    void refresh();
    void signInAndCopy(const QUuid& localUser);
    void copy(Direction direction, const QUuid& localUser, const QUuid& googleUser);
    void finish(bool succeeded, const QString& message);
    void setRunning(bool running);

    AppServices m_services;
    Offer m_offer;
    // The Google account this view has just moved the local data into: it needs no further offer.
    QUuid m_movedInto;
    std::shared_ptr<TransferControl> m_control;
    QLabel* m_explanation;
    QPushButton* m_move;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
    QLabel* m_status;
};
