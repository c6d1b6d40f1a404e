#include "networking/UrlSession.h"

#include <QtGlobal>

#include <array>
#include <curl/curl.h>
#include <mutex>
#include <vector>

namespace {

size_t appendToBody(char* data, size_t size, size_t count, void* body)
{
    static_cast<QByteArray*>(body)->append(data, static_cast<qsizetype>(size * count));
    return size * count;
}

} // namespace

class UrlSession::State {
public:
    State()
    {
        curl_global_init(CURL_GLOBAL_DEFAULT);
        m_share = curl_share_init();
        if (!m_share)
            qFatal("UrlSession: libcurl could not create its share handle");
        curl_share_setopt(m_share, CURLSHOPT_LOCKFUNC, &State::lock);
        curl_share_setopt(m_share, CURLSHOPT_UNLOCKFUNC, &State::unlock);
        curl_share_setopt(m_share, CURLSHOPT_USERDATA, this);
        curl_share_setopt(m_share, CURLSHOPT_SHARE, CURL_LOCK_DATA_CONNECT);
        curl_share_setopt(m_share, CURLSHOPT_SHARE, CURL_LOCK_DATA_DNS);
        curl_share_setopt(m_share, CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);
    }

    CURLSH* share() const { return m_share; }

    // Easy handles are kept between requests with their fixed options set: creating and
    // configuring one costs about as much as the client's side of a loopback request.
    CURL* acquire()
    {
        {
            const std::lock_guard guard(m_poolMutex);
            if (!m_idle.empty()) {
                CURL* handle = m_idle.back();
                m_idle.pop_back();
                return handle;
            }
        }
        CURL* handle = curl_easy_init();
        if (!handle)
            throw UrlSessionError(QStringLiteral("libcurl could not create a request handle"));
        curl_easy_setopt(handle, CURLOPT_SHARE, m_share);
        curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
        curl_easy_setopt(handle, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
        curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
        curl_easy_setopt(handle, CURLOPT_MAXREDIRS, 16L);
        curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(handle, CURLOPT_ACCEPT_ENCODING, "");
        curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &appendToBody);
        // The limit is on idleness, not on the whole exchange: a slow but moving download goes on.
        curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, 1L);
        return handle;
    }

    // Forgets everything that pointed into the finished request, so the next one starts clean.
    void release(CURL* handle)
    {
        curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, nullptr);
        curl_easy_setopt(handle, CURLOPT_WRITEDATA, nullptr);
        curl_easy_setopt(handle, CURLOPT_HTTPHEADER, nullptr);
        curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, nullptr);
        curl_easy_setopt(handle, CURLOPT_POSTFIELDS, nullptr);
        curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(-1));
        curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L);
        {
            const std::lock_guard guard(m_poolMutex);
            if (m_idle.size() < maxIdleHandles) {
                m_idle.push_back(handle);
                return;
            }
        }
        curl_easy_cleanup(handle);
    }

private:
    static void lock(CURL*, curl_lock_data data, curl_lock_access, void* state)
    {
        static_cast<State*>(state)->m_locks.at(static_cast<std::size_t>(data)).lock();
    }

    static void unlock(CURL*, curl_lock_data data, void* state)
    {
        static_cast<State*>(state)->m_locks.at(static_cast<std::size_t>(data)).unlock();
    }

    static constexpr std::size_t maxIdleHandles = 16;

    CURLSH* m_share = nullptr;
    std::array<std::mutex, CURL_LOCK_DATA_LAST> m_locks;
    std::mutex m_poolMutex;
    std::vector<CURL*> m_idle;
};

namespace {

struct HeaderList {
    curl_slist* list = nullptr;
    ~HeaderList() { curl_slist_free_all(list); }

    void add(const QByteArray& line)
    {
        curl_slist* grown = curl_slist_append(list, line.constData());
        if (!grown)
            throw UrlSessionError(QStringLiteral("out of memory"));
        list = grown;
    }
};

// Gives the handle back to the pool on every way out of send().
struct PooledHandle {
    UrlSession::State& state;
    CURL* handle;
    ~PooledHandle() { state.release(handle); }
};

} // namespace

UrlSession UrlSession::shared()
{
    // Never destroyed: a worker thread may still be sending while the process exits, and libcurl
    // must not be cleaned up under it.
    static State* state = new State;
    return UrlSession(state);
}

UrlResponse UrlSession::send(const UrlRequest& request) const
{
    PooledHandle pooled {*m_state, m_state->acquire()};
    CURL* curl = pooled.handle;

    char errorBuffer[CURL_ERROR_SIZE] = {};
    QByteArray body;
    HeaderList headers;
    for (const auto& [name, value] : request.headers)
        headers.add(name + ": " + value);
    // libcurl would otherwise ask large bodies to wait for "100 Continue", a round trip for nothing.
    if (request.httpBody)
        headers.add("Expect:");

    const QByteArray url = request.url.toEncoded();
    const long idleSeconds = qMax<long>(1, static_cast<long>((request.timeoutInterval.count() + 999) / 1000));

    curl_easy_setopt(curl, CURLOPT_URL, url.constData());
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, errorBuffer);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &body);
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers.list);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(request.timeoutInterval.count()));
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, idleSeconds);

    if (request.httpBody) {
        curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.httpBody->size()));
        curl_easy_setopt(curl, CURLOPT_POSTFIELDS, request.httpBody->constData());
    }
    // A body makes libcurl speak POST; the method's own name goes on the request line.
    if (request.httpMethod != "GET" || request.httpBody)
        curl_easy_setopt(curl, CURLOPT_CUSTOMREQUEST, request.httpMethod.constData());

    const CURLcode result = curl_easy_perform(curl);
    if (result != CURLE_OK) {
        const QString description
            = errorBuffer[0] ? QString::fromUtf8(errorBuffer) : QString::fromUtf8(curl_easy_strerror(result));
        throw UrlSessionError(description);
    }

    long status = 0;
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
    UrlResponse response;
    response.isHTTP = status != 0;
    response.statusCode = static_cast<int>(status);
    response.body = std::move(body);
    return response;
}
