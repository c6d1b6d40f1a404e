#pragma once

#include "networking/UrlRequest.h"

#include <QString>

#include <memory>
#include <optional>

class Clock;

// Writes every exchange with the backend to standard output and appends it to
// "$XDG_DATA_HOME/Tolvane/Logs/network.log". A record:
//
//     [2026-11-21 09:00:00]
//     endpoint: GET https://backend/v0/projects
//     request: -
//     response: 200 [{"prjId":"..."}]
//
// Successful response bodies lose every member whose key names a title, a date or a done flag:
// those are what the user wrote and when, and the log is not the place for them.
// A value type; copies share the clock.
class NetworkLogger {
public:
    // The file lives under AppPaths::applicationSupportDirectory(); its directory is created now.
    explicit NetworkLogger(bool isEnabled);
    // Writes to filePath (none: standard output only), stamping records with clock's time.
    NetworkLogger(bool isEnabled, std::optional<QString> filePath, std::shared_ptr<const Clock> clock);

    bool isEnabled() const { return m_isEnabled; }
    const std::optional<QString>& fileURL() const { return m_fileURL; }

    void log(const QString& endpoint, const UrlRequest& request, const QString& response) const;

    // The record for one exchange, as log() writes it.
    QString record(const QString& endpoint, const UrlRequest& request, const QString& response) const;

    // "200 <json>" with the private members removed; any other text, or JSON that does not
    // parse, comes back unchanged.
    static QString filteredResponse(const QString& response);

private:
    bool m_isEnabled;
    std::optional<QString> m_fileURL;
    std::shared_ptr<const Clock> m_clock;
};
