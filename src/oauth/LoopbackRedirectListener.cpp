#include "oauth/LoopbackRedirectListener.h"

#include <QHostAddress>
#include <QTimer>

namespace {

constexpr qsizetype maxRequestHeaderBytes = 64 * 1024;

void answer(QTcpSocket* socket, int status, const QByteArray& reason, const QByteArray& html)
{
    QByteArray response = "HTTP/1.1 " + QByteArray::number(status) + ' ' + reason + "\r\n";
    response += "Content-Type: text/html; charset=utf-8\r\n";
    response += "Content-Length: " + QByteArray::number(html.size()) + "\r\n";
    response += "Cache-Control: no-store\r\nConnection: close\r\n\r\n";
    response += html;
    socket->write(response);
    // Nothing runs the event loop once the listener is done, so the page is pushed out here.
    while (socket->bytesToWrite() > 0 && socket->waitForBytesWritten(2000)) { }
    socket->disconnectFromHost();
}

QByteArray page(const QString& title, const QString& text)
{
    return QStringLiteral("<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>%1</title></head>"
                          "<body style=\"font-family:sans-serif;margin:3em\"><h1>%1</h1><p>%2</p></body></html>")
        .arg(title.toHtmlEscaped(), text.toHtmlEscaped())
        .toUtf8();
}

} // namespace

LoopbackRedirectListener::LoopbackRedirectListener()
{
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_loop, [this] { accept(); });
}

LoopbackRedirectListener::~LoopbackRedirectListener()
{
    m_server.close();
    for (const auto& socket : std::as_const(m_sockets)) {
        if (socket)
            socket->abort();
    }
}

bool LoopbackRedirectListener::listen(QString* error)
{
    // Never QHostAddress::Any: the redirect carries the authorization code, which must not be
    // offered to the network.
    if (m_server.listen(QHostAddress::LocalHost, 0))
        return true;
    if (error)
        *error = m_server.errorString();
    return false;
}

QUrl LoopbackRedirectListener::redirectURI() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(port()));
}

LoopbackRedirectListener::Outcome LoopbackRedirectListener::waitForRedirect(std::chrono::milliseconds limit)
{
    if (m_redirectURL.isValid())
        return Outcome::received;
    QTimer deadline;
    deadline.setSingleShot(true);
    QObject::connect(&deadline, &QTimer::timeout, &m_loop, [this] { m_loop.exit(int(Outcome::timedOut)); });
    deadline.start(limit);
    if (m_canceled)
        return Outcome::canceled;
    const auto outcome = static_cast<Outcome>(m_loop.exec());
    if (outcome != Outcome::received)
        m_server.close();
    return outcome;
}

void LoopbackRedirectListener::cancel()
{
    m_canceled = true;
    QMetaObject::invokeMethod(
        &m_loop, [this] { m_loop.exit(int(Outcome::canceled)); }, Qt::QueuedConnection);
}

void LoopbackRedirectListener::accept()
{
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        m_sockets.append(socket);
        socket->setParent(&m_server);
        QObject::connect(socket, &QTcpSocket::readyRead, &m_loop, [this, socket] { read(socket); });
    }
}

void LoopbackRedirectListener::read(QTcpSocket* socket)
{
    if (m_redirectSocket == socket)
        return;
    QByteArray& buffer = m_buffers[socket];
    buffer += socket->readAll();
    const qsizetype headerEnd = buffer.indexOf("\r\n\r\n");
    if (headerEnd < 0) {
        if (buffer.size() > maxRequestHeaderBytes)
            socket->abort();
        return;
    }
    const QList<QByteArray> requestLine = buffer.left(buffer.indexOf("\r\n")).split(' ');
    m_buffers.remove(socket);
    if (requestLine.size() != 3 || requestLine.at(0) != "GET") {
        answer(socket, 405, "Method Not Allowed", page(QStringLiteral("Tolvane"), QStringLiteral("Not here.")));
        return;
    }
    const QUrl target = QUrl::fromEncoded(requestLine.at(1));
    // Browsers ask for a favicon on their own; only the redirect URI's own path is the redirect.
    if (target.path() != QLatin1String("/") || m_redirectURL.isValid()) {
        answer(socket, 404, "Not Found", page(QStringLiteral("Tolvane"), QStringLiteral("Not here.")));
        return;
    }
    m_redirectSocket = socket;
    m_redirectURL = redirectURI().resolved(target);
    // Exactly one redirect: from now on nobody else can connect.
    m_server.close();
    m_loop.exit(int(Outcome::received));
}

void LoopbackRedirectListener::finish(bool succeeded, const QString& text)
{
    if (m_redirectSocket) {
        answer(m_redirectSocket, 200, "OK",
            page(succeeded ? QStringLiteral("Signed in to Tolvane") : QStringLiteral("Sign-in failed"), text));
    }
    m_server.close();
    for (const auto& socket : std::as_const(m_sockets)) {
        if (socket && socket != m_redirectSocket)
            socket->abort();
    }
}
