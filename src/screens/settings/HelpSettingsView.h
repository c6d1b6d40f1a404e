#pragma once

#include <QUrl>
#include <QWidget>

class AppServices;
class QLabel;
class QPlainTextEdit;
class SettingsButtonView;

// The help form: a message to the team, sent through the backend, or handed to the user's mail
// client when it cannot be sent. The information console sits below it, for what to quote.
class HelpSettingsView final : public QWidget {
    Q_OBJECT

public:
    HelpSettingsView(const AppServices& services, QWidget* console, QWidget* parent = nullptr);

    // "mailto:" the support address with the message in the body; empty when there is no
    // support address or the text cannot make a valid address.
    static QUrl supportMailURL(const QString& helpMessage);
    // Whether a message can go anywhere: to the backend, or by mail to the support address.
    bool canSendHelpMessage() const;
    // Why sending is off, or what became of the last message; hidden when there is nothing to say.
    QLabel* notice() const { return m_notice; }

    QString helpMessage() const;
    bool isSendingHelpMessage() const { return m_isSendingHelpMessage; }

    void sendHelpMessage();

Q_SIGNALS:
    // After each attempt, once the alert was closed or the mail client was asked to open.
    void helpMessageHandled(bool sent);

private:
    void render();

    const AppServices& m_services;
    bool m_isSendingHelpMessage = false;
    QPlainTextEdit* m_message;
    SettingsButtonView* m_send;
    QLabel* m_notice;
};
