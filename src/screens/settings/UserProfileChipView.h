#pragma once

#include "login/UserEntity.h"

#include <QWidget>

#include <optional>

class AppServices;
class QLabel;
class QPushButton;
class QToolButton;

// The account at the foot of the sidebar: who is signed in, and the way in for a new user
// (a local account, or Google when configured), sign-out and the settings.
class UserProfileChipView final : public QWidget {
    Q_OBJECT

public:
    explicit UserProfileChipView(const AppServices& services, QWidget* parent = nullptr);

    const std::optional<UserEntity>& user() const { return m_user; }
    void reload();

    // Asks for the names of a new local account and saves it; public for the keyboard shortcut
    // and for tests.
    void setUpLocalAccount();
    void signInWithGoogle();
    void signOut();

private:
    void render();
    void accountChanged();

    const AppServices& m_services;
    std::optional<UserEntity> m_user;
    bool m_isSigningInWithGoogle = false;
    bool m_hasGoogleSignInError = false;
    QLabel* m_avatar;
    QLabel* m_name;
    // "Set up your account" in place of the name, while there is no account.
    QPushButton* m_setUp;
    QToolButton* m_menuButton;
};
