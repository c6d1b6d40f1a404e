#include "support/http/HttpTestServer.h"

#include <QHostAddress>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <atomic>
#include <openssl/crypto.h>

namespace {

QByteArray reasonPhrase(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 201:
        return "Created";
    case 204:
        return "No Content";
    case 400:
        return "Bad Request";
    case 401:
        return "Unauthorized";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 409:
        return "Conflict";
    case 500:
        return "Internal Server Error";
    default:
        return "Status";
    }
}

bool mayHaveBody(int status)
{
    return status >= 200 && status != 204 && status != 304;
}

QByteArray serialize(const FakeResponse& response)
{
    QByteArray out = "HTTP/1.1 " + QByteArray::number(response.status) + ' ' + reasonPhrase(response.status) + "\r\n";
    if (mayHaveBody(response.status)) {
        out += "Content-Length: " + QByteArray::number(response.body.size()) + "\r\n";
        if (!response.contentType.isEmpty())
            out += "Content-Type: " + response.contentType + "\r\n";
    }
    for (const auto& [name, value] : response.headers)
        out += name + ": " + value + "\r\n";
    out += "\r\n";
    if (mayHaveBody(response.status))
        out += response.body;
    return out;
}

// Splits "/path?query" and decodes the path.
void splitTarget(RecordedRequest& request)
{
    const qsizetype question = request.target.indexOf('?');
    const QByteArray rawPath = question < 0 ? request.target : request.target.left(question);
    if (question >= 0)
        request.query = request.target.mid(question + 1);
    request.path = QString::fromUtf8(QByteArray::fromPercentEncoding(rawPath));
}

} // namespace

// Lives on the server's thread; every socket it owns is served there.
class HttpTestServerWorker : public QObject {
public:
    explicit HttpTestServerWorker(HttpTestServer::Handler handler)
        : m_handler(std::move(handler))
    {
    }

    quint16 listen()
    {
        m_server = new QTcpServer(this);
        if (!m_server->listen(QHostAddress::LocalHost, 0))
            qFatal("HttpTestServer: cannot listen on 127.0.0.1: %s", qPrintable(m_server->errorString()));
        QObject::connect(m_server, &QTcpServer::newConnection, this, [this] { accept(); });
        return m_server->serverPort();
    }

    std::atomic<int> connections {0};

private:
    struct Connection {
        QByteArray buffer;
        bool busy = false; // a delayed answer is pending; later requests wait their turn
    };

    void accept()
    {
        while (QTcpSocket* socket = m_server->nextPendingConnection()) {
            ++connections;
            auto state = std::make_shared<Connection>();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, state] {
                state->buffer += socket->readAll();
                serve(socket, state);
            });
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    }

    // Answers every complete request in the buffer, in order.
    void serve(QTcpSocket* socket, const std::shared_ptr<Connection>& state)
    {
        while (!state->busy) {
            QByteArray& buffer = state->buffer;
            const qsizetype headerEnd = buffer.indexOf("\r\n\r\n");
            if (headerEnd < 0)
                return;
            RecordedRequest request;
            const QList<QByteArray> lines = buffer.left(headerEnd).split('\n');
            const QList<QByteArray> requestLine = lines.value(0).trimmed().split(' ');
            if (requestLine.size() != 3) {
                socket->write("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
                socket->disconnectFromHost();
                return;
            }
            request.method = requestLine.at(0);
            request.target = requestLine.at(1);
            splitTarget(request);
            qsizetype contentLength = 0;
            bool expectsContinue = false;
            for (qsizetype i = 1; i < lines.size(); ++i) {
                const QByteArray line = lines.at(i).trimmed();
                const qsizetype colon = line.indexOf(':');
                if (colon <= 0)
                    continue;
                const QByteArray name = line.left(colon).trimmed();
                const QByteArray value = line.mid(colon + 1).trimmed();
                request.headers.append({name, value});
                if (name.compare("Content-Length", Qt::CaseInsensitive) == 0)
                    contentLength = value.toLongLong();
                if (name.compare("Expect", Qt::CaseInsensitive) == 0
                    && value.compare("100-continue", Qt::CaseInsensitive) == 0)
                    expectsContinue = true;
            }
            const qsizetype bodyStart = headerEnd + 4;
            if (buffer.size() - bodyStart < contentLength) {
                if (expectsContinue && buffer.size() == bodyStart && !state->busy)
                    socket->write("HTTP/1.1 100 Continue\r\n\r\n");
                return;
            }
            request.body = buffer.mid(bodyStart, contentLength);
            buffer.remove(0, bodyStart + contentLength);

            const bool closeAfter = request.header("Connection").compare("close", Qt::CaseInsensitive) == 0;
            const FakeResponse response = m_handler(request);
            if (response.dropConnection) {
                socket->disconnectFromHost();
                return;
            }
            if (response.delay.count() > 0) {
                state->busy = true;
                QPointer<QTcpSocket> guarded(socket);
                QTimer::singleShot(response.delay, socket, [this, guarded, state, response, closeAfter] {
                    if (!guarded)
                        return;
                    state->busy = false;
                    respond(guarded, response, closeAfter);
                    if (!closeAfter)
                        serve(guarded, state);
                });
                return;
            }
            respond(socket, response, closeAfter);
            if (closeAfter)
                return;
        }
    }

    static void respond(QTcpSocket* socket, const FakeResponse& response, bool closeAfter)
    {
        socket->write(serialize(response));
        if (closeAfter)
            socket->disconnectFromHost();
    }

    HttpTestServer::Handler m_handler;
    QTcpServer* m_server = nullptr;
};

QByteArray RecordedRequest::header(const QByteArray& name) const
{
    for (const auto& [headerName, value] : headers) {
        if (headerName.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

bool RecordedRequest::hasHeader(const QByteArray& name) const
{
    for (const auto& header : headers) {
        if (header.first.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

QList<std::pair<QString, QString>> RecordedRequest::queryItems() const
{
    QList<std::pair<QString, QString>> items;
    if (!query || query->isEmpty())
        return items;
    for (const QByteArray& item : query->split('&')) {
        const qsizetype equals = item.indexOf('=');
        const QByteArray name = equals < 0 ? item : item.left(equals);
        const QByteArray value = equals < 0 ? QByteArray() : item.mid(equals + 1);
        items.append({QString::fromUtf8(QByteArray::fromPercentEncoding(name)),
            QString::fromUtf8(QByteArray::fromPercentEncoding(value))});
    }
    return items;
}

HttpTestServer::HttpTestServer(Handler handler)
    : m_worker(new HttpTestServerWorker(std::move(handler)))
{
    m_thread.setObjectName(QStringLiteral("HttpTestServer"));
    m_worker->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    // Handlers use OpenSSL on this thread (the identity provider signs its tokens), which keeps
    // per-thread state (its random generators) that a thread's exit frees. wait() returns before
    // a Qt thread has exited, so the process can end first and leave that state behind: it is
    // released here, on the thread, before wait() can return.
    QObject::connect(&m_thread, &QThread::finished, [] { OPENSSL_thread_stop(); });
    m_thread.start();
    QMetaObject::invokeMethod(
        m_worker, [this] { return m_worker->listen(); }, Qt::BlockingQueuedConnection, &m_port);
}

HttpTestServer::~HttpTestServer()
{
    m_thread.quit();
    m_thread.wait();
}

QUrl HttpTestServer::url() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_port));
}

int HttpTestServer::connectionCount() const
{
    return m_worker->connections.load();
}
