// The loopback listener takes whatever any local process (or a page in the browser) sends to its
// port. The input goes over a real connection; a request that arrives whole is then read the way
// sign-in reads the redirect's query.
#include "FuzzInput.h"
#include "oauth/LoopbackRedirectListener.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QTcpSocket>
#include <QUrlQuery>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static int argc = 1;
    static char name[] = "fuzz_loopback_redirect";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);

    LoopbackRedirectListener listener;
    QString error;
    if (!listener.listen(&error))
        std::abort();
    QTcpSocket browser;
    browser.connectToHost(QHostAddress::LocalHost, listener.port());
    browser.write(fuzzBytes(data, size));
    // A request without its blank line never completes: the short limit ends the wait.
    if (listener.waitForRedirect(std::chrono::milliseconds(20)) == LoopbackRedirectListener::Outcome::received) {
        const QUrlQuery query(listener.redirectURL());
        for (const char* key : {"state", "code", "error", "error_description", "scope"})
            query.queryItemValue(QLatin1String(key), QUrl::FullyDecoded);
        listener.finish(false, query.queryItemValue(QStringLiteral("error_description"), QUrl::FullyDecoded));
    }
    return 0;
}
