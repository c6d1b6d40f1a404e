// The token endpoint's answer, served over a real loopback connection to the real transport: the
// first byte picks a success or an OAuth error status, the rest is the body.
#include "FuzzInput.h"
#include "oauth/GIDSignInError.h"
#include "oauth/GIDTokenEndpoint.h"

#include <QByteArray>

#include <arpa/inet.h>
#include <cstdlib>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

// Accepts one connection, reads the request up to its body and answers with status and body.
void answerOnce(int server, int status, const QByteArray& body)
{
    // The client may give up before it connects; the fuzzer must not wait for it forever.
    pollfd waiting {server, POLLIN, 0};
    if (::poll(&waiting, 1, 10000) != 1)
        return;
    const int connection = ::accept(server, nullptr, nullptr);
    if (connection < 0)
        return;
    QByteArray request;
    char buffer[4096];
    qsizetype expected = -1;
    while (expected < 0 || request.size() < expected) {
        const ssize_t got = ::read(connection, buffer, sizeof buffer);
        if (got <= 0)
            break;
        request.append(buffer, got);
        const qsizetype headerEnd = request.indexOf("\r\n\r\n");
        if (expected < 0 && headerEnd >= 0) {
            const qsizetype length = request.toLower().indexOf("content-length:");
            expected = headerEnd + 4
                + (length >= 0 ? request.mid(length + 15, 12).trimmed().split('\r').first().toLongLong() : 0);
        }
    }
    const QByteArray answer = "HTTP/1.1 " + QByteArray::number(status) + " X\r\nContent-Type: application/json\r\n"
        + "Content-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
    for (qsizetype sent = 0; sent < answer.size();) {
        const ssize_t wrote = ::write(connection, answer.constData() + sent, size_t(answer.size() - sent));
        if (wrote <= 0)
            break;
        sent += wrote;
    }
    ::close(connection);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const int server = [] {
        const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (socket < 0 || ::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0
            || ::listen(socket, 4) != 0)
            std::abort();
        return socket;
    }();
    static const quint16 port = [] {
        sockaddr_in address {};
        socklen_t length = sizeof address;
        ::getsockname(server, reinterpret_cast<sockaddr*>(&address), &length);
        return ntohs(address.sin_port);
    }();
    if (size == 0)
        return 0;
    const int status = data[0] % 2 == 0 ? 200 : 400;
    const QByteArray body = fuzzBytes(data + 1, size - 1);
    std::thread answering(answerOnce, server, status, body);
    const GIDTokenEndpoint endpoint(UrlSession::shared(), QUrl(QStringLiteral("http://127.0.0.1:%1/token").arg(port)),
        GIDConfiguration(QStringLiteral("client")));
    try {
        const GIDTokenResponse tokens = endpoint.refresh(QStringLiteral("refresh-token"));
        // Whatever the number sent, the lifetime kept can be added to the current time.
        if (tokens.expiresIn < 0 || tokens.expiresIn > 24 * 60 * 60)
            std::abort();
    } catch (const DescribedError&) {
    }
    answering.join();
    return 0;
}
