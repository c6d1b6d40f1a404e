#pragma once

#include "networking/UrlSession.h"
#include "oauth/JsonWebKey.h"

#include <QHash>
#include <QMutex>
#include <QUrl>

#include <optional>

// The signing keys a provider publishes, fetched when first needed and kept for the process.
// Providers rotate their keys: a key id that the kept set does not know makes it fetch the set
// again, once per lookup.
class JsonWebKeySet {
public:
    JsonWebKeySet(UrlSession session, QUrl url);

    // The RS256 signing key with keyID, or nothing when the provider publishes none. Throws a
    // DescribedError when the set cannot be fetched or read. Thread-safe.
    std::optional<JsonWebKey> key(const QString& keyID);

private:
    QHash<QString, JsonWebKey> fetch() const;

    UrlSession m_session;
    QUrl m_url;
    QMutex m_mutex;
    std::optional<QHash<QString, JsonWebKey>> m_keys;
};
