#pragma once

#include "login/SupportApplication.h"

#include <QObject>

#include <functional>

class ErrorConsoleStore;

// Sends the help form's message to the backend.
class SupportController {
public:
    static inline const QString sendAction = QStringLiteral("SupportController.sendMessage");

    SupportController(SupportApplication application, ErrorConsoleStore& console);

    // Whether a backend is there to take the message.
    bool hasBackend() const { return application.repository != nullptr; }

    // done(sent) runs on receiver's thread. Without a backend nothing can be sent: that is a
    // failure like any other, so the form falls back to the mail client.
    void sendMessage(QObject* receiver, const QString& message, std::function<void(bool sent)> done) const;

    SupportApplication application;

private:
    ErrorConsoleStore& m_console;
};
