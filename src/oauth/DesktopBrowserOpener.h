#pragma once

#include "oauth/BrowserOpener.h"

// The user's default browser, through the desktop's URL handler.
class DesktopBrowserOpener final : public BrowserOpener {
public:
    bool open(const QUrl& url) override;
};
