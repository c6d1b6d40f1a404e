#include "screens/settings/HelpSettingsView.h"

#include "platform/BuildSettings.h"
#include "screens/common/AppServices.h"
#include "screens/settings/SettingsButtonView.h"
#include "screens/settings/SupportController.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

HelpSettingsView::HelpSettingsView(const AppServices& services, QWidget* console, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_message(new QPlainTextEdit(this))
    , m_notice(new QLabel(this))
{
    setObjectName(QStringLiteral("helpSettings"));
    m_message->setObjectName(QStringLiteral("helpMessage"));
    //% "Tell us what happened or what you need"
    m_message->setPlaceholderText(qtTrId("user-settings-help-message-field"));
    m_message->setMaximumHeight(140);
    //% "Send"
    m_send = new SettingsButtonView("user-settings-help-send-button", qtTrId("user-settings-help-send-button"),
        QString(), {.isPrimary = true}, this);
    m_notice->setObjectName(QStringLiteral("helpNotice"));
    m_notice->setWordWrap(true);
    m_notice->setTextFormat(Qt::PlainText);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_notice, 1);
    buttons->addWidget(m_send, 0, Qt::AlignTop);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_message);
    layout->addLayout(buttons);
    if (console) {
        console->setParent(this);
        layout->addWidget(console, 1);
    } else {
        layout->addStretch();
    }
    // Which version this is, for the message and for anyone reading the console: a name and a
    // number, the same in every language.
    auto* version = new QLabel(QStringLiteral("Tolvane ") + BuildSettings::version(), this);
    version->setObjectName(QStringLiteral("helpVersion"));
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    version->setEnabled(false);
    layout->addWidget(version, 0, Qt::AlignRight);
    connect(m_message, &QPlainTextEdit::textChanged, this, &HelpSettingsView::render);
    connect(m_send, &QPushButton::clicked, this, &HelpSettingsView::sendHelpMessage);
    render();
}

QUrl HelpSettingsView::supportMailURL(const QString& helpMessage)
{
    if (BuildSettings::supportEmail().trimmed().isEmpty())
        return {};
    const QString body
        = QStringLiteral("Hola estoy usando Tolvane y necesito ayuda:\n") + helpMessage + QLatin1Char('\n');
    // Everything a query may carry stays as it is; the rest (spaces, line feeds, non-ASCII) is
    // percent-encoded as UTF-8.
    const QByteArray encoded = QUrl::toPercentEncoding(body, QByteArrayLiteral("!$&'()*+,/:;=?@"));
    const QUrl url = QUrl::fromEncoded(
        QByteArrayLiteral("mailto:") + QUrl::toPercentEncoding(BuildSettings::supportEmail(), "@") + "?body=" + encoded,
        QUrl::StrictMode);
    return url.isValid() ? url : QUrl();
}

QString HelpSettingsView::helpMessage() const
{
    return m_message->toPlainText();
}

bool HelpSettingsView::canSendHelpMessage() const
{
    return SupportController(m_services.supportApplication(), m_services.console()).hasBackend()
        || !BuildSettings::supportEmail().trimmed().isEmpty();
}

void HelpSettingsView::render()
{
    // A mail with nobody to send it to helps no one: without a backend or an address, say so
    // rather than offer a button that cannot work.
    const bool reachable = canSendHelpMessage();
    m_send->setLoading(m_isSendingHelpMessage);
    m_send->setDisabled(!reachable || m_message->toPlainText().trimmed().isEmpty());
    m_message->setReadOnly(m_isSendingHelpMessage);
    if (!reachable)
        //% "This copy of Tolvane has no support service or support address set up, so messages cannot be sent from
        // here. The console below keeps what went wrong, for you to pass on."
        m_notice->setText(qtTrId("user-settings-help-unavailable-text"));
    m_notice->setVisible(!m_notice->text().isEmpty());
}

void HelpSettingsView::sendHelpMessage()
{
    const QString message = helpMessage();
    if (message.trimmed().isEmpty() || m_isSendingHelpMessage)
        return;
    m_isSendingHelpMessage = true;
    render();
    const SupportController controller(m_services.supportApplication(), m_services.console());
    controller.sendMessage(this, message, [this, message](bool sent) {
        m_isSendingHelpMessage = false;
        if (sent) {
            m_notice->clear();
            m_message->clear();
            render();
            //% "Message sent"
            QMessageBox alert(QMessageBox::Information, qtTrId("user-settings-help-sent-title"),
                qtTrId("user-settings-help-sent-title"), QMessageBox::NoButton, this);
            alert.setObjectName(QStringLiteral("helpSentAlert"));
            //% "Thank you. We will answer you by e-mail."
            alert.setInformativeText(qtTrId("user-settings-help-sent-message"));
            //% "OK"
            alert.addButton(qtTrId("user-settings-help-sent-button"), QMessageBox::AcceptRole);
            alert.exec();
        } else {
            // The message is kept, so the user still has it if no mail client opens.
            if (const QUrl mail = supportMailURL(message); !mail.isEmpty())
                QDesktopServices::openUrl(mail);
            else
                //% "The message could not be sent. It is kept here; try again later."
                m_notice->setText(qtTrId("user-settings-help-send-failed-text"));
            render();
        }
        Q_EMIT helpMessageHandled(sent);
    });
}
