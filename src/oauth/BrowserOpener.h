#pragma once

#include <QUrl>

// Shows the authorization page to the user.
class BrowserOpener {
public:
    virtual ~BrowserOpener() = default;
    // False when no browser could be asked to open the page.
    virtual bool open(const QUrl& url) = 0;
};
