#pragma once

#include <QString>

#include <optional>

// The OAuth client the application signs in as. A desktop client has a "secret" that every
// installed copy carries, so it proves nothing; it is sent only because the token endpoint asks for
// it when the client was registered with one.
struct GIDConfiguration {
    explicit GIDConfiguration(QString clientID, QString clientSecret = {})
        : clientID(std::move(clientID))
        , clientSecret(std::move(clientSecret))
    {
    }

    QString clientID;
    QString clientSecret;

    // TOLVANE_GOOGLE_CLIENT_ID and TOLVANE_GOOGLE_CLIENT_SECRET as built, each replaced by an
    // environment variable of the same name when that is set. No configuration when the client id
    // is empty: Google sign-in is then off.
    static std::optional<GIDConfiguration> fromBuildSettings();
};
