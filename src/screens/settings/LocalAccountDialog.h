#pragma once

#include "login/UserEntity.h"

#include <QDialog>

class QLabel;
class QLineEdit;

// First name, last name and e-mail of a new local account. The names are checked here with the
// same rule the account store applies, so the user sees what is missing before saving.
class LocalAccountDialog final : public QDialog {
    Q_OBJECT

public:
    explicit LocalAccountDialog(QWidget* parent = nullptr);

    // The names and address typed; the caller gives the account its id.
    UserEntity user() const;

    void accept() override;

private:
    QLineEdit* m_firstName;
    QLineEdit* m_lastName;
    QLineEdit* m_email;
    QLabel* m_error;
};
