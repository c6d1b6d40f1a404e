#include "support/identity/ScriptedBrowser.h"

#include <QTcpSocket>

ScriptedBrowser::ScriptedBrowser(Behaviour behaviour)
    : m_behaviour(behaviour)
{
}

ScriptedBrowser::~ScriptedBrowser()
{
    waitUntilDone();
}

bool ScriptedBrowser::open(const QUrl& url)
{
    {
        const QMutexLocker locker(&m_mutex);
        m_authorizationURL = url;
    }
    if (m_behaviour == Behaviour::refuseToOpen)
        return false;
    if (m_behaviour == Behaviour::stayOnPage)
        return true;
    m_thread.reset(QThread::create([this, url] { browse(url); }));
    m_thread->start();
    return true;
}

void ScriptedBrowser::waitUntilDone()
{
    if (m_thread)
        m_thread->wait();
}

void ScriptedBrowser::browse(const QUrl& url)
{
    const Visit provider = get(beforeVisiting ? beforeVisiting(url) : url);
    {
        const QMutexLocker locker(&m_mutex);
        m_location = provider.location;
    }
    if (provider.status != 302)
        return;
    const QUrl redirect = QUrl::fromEncoded(provider.location);
    if (asksForFavicon) {
        QUrl favicon = redirect;
        favicon.setPath(QStringLiteral("/favicon.ico"));
        favicon.setQuery(QString());
        const Visit visit = get(favicon);
        const QMutexLocker locker(&m_mutex);
        m_favicon = visit;
    }
    const Visit landing = get(redirect);
    {
        const QMutexLocker locker(&m_mutex);
        m_landing = landing;
    }
    if (repeatsRedirect) {
        const Visit again = get(redirect);
        const QMutexLocker locker(&m_mutex);
        m_repeated = again;
    }
}

ScriptedBrowser::Visit ScriptedBrowser::get(const QUrl& url)
{
    Visit visit;
    QTcpSocket socket;
    socket.connectToHost(url.host(), static_cast<quint16>(url.port(80)));
    if (!socket.waitForConnected(5000))
        return visit;
    visit.connected = true;
    const QByteArray target = url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority);
    socket.write("GET " + (target.isEmpty() ? QByteArray("/") : target)
        + " HTTP/1.1\r\nHost: " + url.authority().toLatin1() + "\r\nConnection: close\r\n\r\n");
    QByteArray response;
    while (socket.waitForReadyRead(30000) || socket.bytesAvailable() > 0)
        response += socket.readAll();
    response += socket.readAll();

    const qsizetype headerEnd = response.indexOf("\r\n\r\n");
    const QList<QByteArray> lines = response.left(headerEnd).split('\n');
    const QList<QByteArray> statusLine = lines.value(0).split(' ');
    visit.status = statusLine.value(1).toInt();
    for (const QByteArray& line : lines) {
        if (line.toLower().startsWith("location:"))
            visit.location = line.mid(9).trimmed();
    }
    if (headerEnd >= 0)
        visit.body = response.mid(headerEnd + 4);
    return visit;
}

QUrl ScriptedBrowser::authorizationURL() const
{
    const QMutexLocker locker(&m_mutex);
    return m_authorizationURL;
}

QByteArray ScriptedBrowser::redirectLocation() const
{
    const QMutexLocker locker(&m_mutex);
    return m_location;
}

std::optional<ScriptedBrowser::Visit> ScriptedBrowser::favicon() const
{
    const QMutexLocker locker(&m_mutex);
    return m_favicon;
}

std::optional<ScriptedBrowser::Visit> ScriptedBrowser::landing() const
{
    const QMutexLocker locker(&m_mutex);
    return m_landing;
}

std::optional<ScriptedBrowser::Visit> ScriptedBrowser::repeatedLanding() const
{
    const QMutexLocker locker(&m_mutex);
    return m_repeated;
}
