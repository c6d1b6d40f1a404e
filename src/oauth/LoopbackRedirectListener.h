#pragma once

#include <QByteArray>
#include <QEventLoop>
#include <QHash>
#include <QList>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <atomic>
#include <chrono>

// Receives the authorization redirect from the browser (RFC 8252 7.3): a listener on 127.0.0.1
// only, on a port the system picks, that takes exactly one redirect and then stops listening.
// Other requests the browser makes meanwhile (a favicon) get 404 and do not count.
//
// Lives on the thread that created it and runs its own event loop while waiting, so sign-in can
// block a worker thread; only cancel() may be called from another thread.
class LoopbackRedirectListener {
public:
    enum class Outcome { received, timedOut, canceled };

    LoopbackRedirectListener();
    ~LoopbackRedirectListener();
    LoopbackRedirectListener(const LoopbackRedirectListener&) = delete;
    LoopbackRedirectListener& operator=(const LoopbackRedirectListener&) = delete;

    // False (with the reason) when no port could be bound.
    bool listen(QString* error);
    quint16 port() const { return m_server.serverPort(); }
    // "http://127.0.0.1:<port>/"
    QUrl redirectURI() const;

    Outcome waitForRedirect(std::chrono::milliseconds limit);
    // The redirect as it arrived, query included; valid after Outcome::received.
    const QUrl& redirectURL() const { return m_redirectURL; }

    // Answers the browser with a short page and closes every connection. Call once the redirect
    // has been dealt with, so the page can tell the user how sign-in ended.
    void finish(bool succeeded, const QString& text);

    // Ends a wait in progress, or the next one, with Outcome::canceled. Thread-safe.
    void cancel();

private:
    void accept();
    void read(QTcpSocket* socket);

    QEventLoop m_loop;
    QTcpServer m_server;
    QList<QPointer<QTcpSocket>> m_sockets;
    QHash<QTcpSocket*, QByteArray> m_buffers;
    QPointer<QTcpSocket> m_redirectSocket;
    QUrl m_redirectURL;
    std::atomic<bool> m_canceled {false};
};
