#pragma once

#include "oauth/BrowserOpener.h"

#include <QByteArray>
#include <QMutex>
#include <QThread>
#include <QUrl>
#include <QWaitCondition>

#include <functional>
#include <memory>
#include <optional>

// The user's browser, played by a thread: asked to open the authorization page, it fetches it,
// follows the provider's redirect to the client's loopback listener over real HTTP and keeps the
// page the listener answered.
class ScriptedBrowser final : public BrowserOpener {
public:
    enum class Behaviour {
        follow, // fetch the page and follow the redirect, like a user who consents
        stayOnPage, // open nothing further, like a user who walks away
        refuseToOpen, // no browser at all
    };

    // One HTTP exchange as the browser saw it.
    struct Visit {
        bool connected = false;
        int status = 0;
        QByteArray location;
        QByteArray body;
    };

    explicit ScriptedBrowser(Behaviour behaviour = Behaviour::follow);
    ~ScriptedBrowser() override;

    bool open(const QUrl& url) override;

    // Runs on the browser's thread before the authorization page is fetched, and answers the URL to
    // fetch instead: a chance to look at the listener meanwhile, or to tamper with the request.
    std::function<QUrl(const QUrl& authorizationURL)> beforeVisiting;
    // Fetch the favicon from the listener before following the redirect, as browsers do.
    bool asksForFavicon = false;
    // After following the redirect, follow it a second time.
    bool repeatsRedirect = false;

    // Waits until the browser has done all it will do.
    void waitUntilDone();

    QUrl authorizationURL() const;
    QByteArray redirectLocation() const;
    std::optional<Visit> favicon() const;
    std::optional<Visit> landing() const;
    std::optional<Visit> repeatedLanding() const;

    static Visit get(const QUrl& url);

private:
    void browse(const QUrl& url);

    Behaviour m_behaviour;
    mutable QMutex m_mutex;
    std::unique_ptr<QThread> m_thread;
    QUrl m_authorizationURL;
    QByteArray m_location;
    std::optional<Visit> m_favicon;
    std::optional<Visit> m_landing;
    std::optional<Visit> m_repeated;
};
