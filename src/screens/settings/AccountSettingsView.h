#pragma once

#include "login/UserEntity.h"

#include <QWidget>

#include <optional>

class AppServices;
class QLabel;
class QLineEdit;
class QStackedWidget;
class SettingsButtonView;

// The "my account" section: the way in for a new user (Google when configured, or a local
// account), and for the current user the names, sign-out and, for a local account, deletion.
class AccountSettingsView final : public QWidget {
    Q_OBJECT

public:
    explicit AccountSettingsView(const AppServices& services, QWidget* parent = nullptr);

    const std::optional<UserEntity>& user() const { return m_user; }
    bool hasExistingUser() const { return m_user.has_value(); }
    bool hasSelectedLocalSetup() const { return m_hasSelectedLocalSetup; }
    bool hasGoogleSignInError() const { return m_hasGoogleSignInError; }
    bool isLoading() const { return m_isLoading; }

    void reload();
    void signInWithGoogle();
    // Asks first; public for the keyboard and for tests.
    void signOut();

Q_SIGNALS:
    void reloaded();

private:
    QWidget* makeChooser();
    QWidget* makeLocalSetup();
    QWidget* makeAccount();
    void render();
    void saveUser(const UserEntity& user);
    void accountChanged();
    bool confirmed(const QString& title, const QString& message, const QString& confirmText);

    const AppServices& m_services;
    std::optional<UserEntity> m_user;
    bool m_isLoading = false;
    bool m_hasSelectedLocalSetup = false;
    bool m_isSigningInWithGoogle = false;
    bool m_hasGoogleSignInError = false;
    QStackedWidget* m_pages;
    QWidget* m_chooser;
    QWidget* m_localSetup;
    QWidget* m_account;
    SettingsButtonView* m_googleButton = nullptr;
    QLabel* m_googleError = nullptr;
    QLineEdit* m_setupFirstName = nullptr;
    QLineEdit* m_setupLastName = nullptr;
    QLineEdit* m_setupEmail = nullptr;
    QLineEdit* m_firstName = nullptr;
    QLineEdit* m_lastName = nullptr;
    QLineEdit* m_email = nullptr;
    QLabel* m_kind = nullptr;
    QLabel* m_error = nullptr;
    SettingsButtonView* m_saveButton = nullptr;
    SettingsButtonView* m_logoutButton = nullptr;
    SettingsButtonView* m_deleteButton = nullptr;
};
