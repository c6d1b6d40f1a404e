#include "platform/SecretServiceKeychain.h"

#include "platform/Logging.h"

// The D-Bus path calls let us see locked items, which the password calls hide; they have been
// part of libsecret since 0.7.
#define SECRET_API_SUBJECT_TO_CHANGE
#include <libsecret/secret.h>

namespace {

const SecretSchema* genericPasswordSchema()
{
    static const SecretSchema schema = {
        "com.quorvel.tolvane.GenericPassword",
        SECRET_SCHEMA_NONE,
        {
            {"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
            {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
            {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING},
        },
        0,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
    };
    return &schema;
}

int statusFor(const GError* error, const char* operation)
{
    qCWarning(lcKeychain, "%s failed: %s", operation, error->message);
    if (g_error_matches(error, SECRET_ERROR, SECRET_ERROR_IS_LOCKED)
        || g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED))
        return KeychainStatus::interactionNotAllowed;
    if (g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN)
        || g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER)
        || g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SPAWN_SERVICE_NOT_FOUND)
        || g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NO_SERVER) || error->domain == G_IO_ERROR
        || error->domain == G_SPAWN_ERROR)
        return KeychainStatus::notAvailable;
    return KeychainStatus::internalError;
}

// Whether the default collection is locked, asked afresh over D-Bus: libsecret's proxies cache
// properties, and a lock made by another client may not have reached the cache yet.
int defaultCollectionStatus(SecretService* service)
{
    GError* error = nullptr;
    gchar* path = secret_service_read_alias_dbus_path_sync(service, "default", nullptr, &error);
    if (error) {
        const int status = statusFor(error, "reading the default collection");
        g_error_free(error);
        return status;
    }
    if (!path)
        return KeychainStatus::success;
    GVariant* reply = g_dbus_connection_call_sync(g_dbus_proxy_get_connection(G_DBUS_PROXY(service)),
        g_dbus_proxy_get_name(G_DBUS_PROXY(service)), path, "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", "org.freedesktop.Secret.Collection", "Locked"), G_VARIANT_TYPE("(v)"),
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error);
    g_free(path);
    if (!reply) {
        const int status = statusFor(error, "reading whether the default collection is locked");
        g_error_free(error);
        return status;
    }
    GVariant* locked = nullptr;
    g_variant_get(reply, "(v)", &locked);
    const bool isLocked = g_variant_is_of_type(locked, G_VARIANT_TYPE_BOOLEAN) && g_variant_get_boolean(locked);
    g_variant_unref(locked);
    g_variant_unref(reply);
    if (isLocked) {
        qCWarning(lcKeychain, "the default keyring collection is locked");
        return KeychainStatus::interactionNotAllowed;
    }
    return KeychainStatus::success;
}

KeychainLookup lookUp(SecretService* service, GHashTable* attributes)
{
    GError* error = nullptr;
    gchar** unlocked = nullptr;
    gchar** locked = nullptr;
    if (!secret_service_search_for_dbus_paths_sync(
            service, genericPasswordSchema(), attributes, nullptr, &unlocked, &locked, &error)) {
        const int status = statusFor(error, "searching the keyring");
        g_error_free(error);
        return {status, std::nullopt};
    }
    KeychainLookup lookup;
    if (unlocked && unlocked[0]) {
        SecretValue* value = secret_service_get_secret_for_dbus_path_sync(service, unlocked[0], nullptr, &error);
        if (error) {
            lookup = {statusFor(error, "reading a keyring item"), std::nullopt};
            g_error_free(error);
        } else if (!value) {
            lookup = {KeychainStatus::success, std::nullopt};
        } else {
            gsize length = 0;
            const gchar* bytes = secret_value_get(value, &length);
            lookup = {KeychainStatus::success, QByteArray(bytes, qsizetype(length))};
            secret_value_unref(value);
        }
    } else if (locked && locked[0]) {
        qCWarning(lcKeychain, "the keyring item is in a locked collection");
        lookup = {KeychainStatus::interactionNotAllowed, std::nullopt};
    } else {
        // Some Secret Service implementations hide the items of a locked collection entirely.
        const int status = defaultCollectionStatus(service);
        lookup = {status == KeychainStatus::success ? KeychainStatus::itemNotFound : status, std::nullopt};
    }
    g_strfreev(unlocked);
    g_strfreev(locked);
    return lookup;
}

} // namespace

KeychainLookup SecretServiceKeychain::copyMatching(const QString& service, const QString& account)
{
    GError* error = nullptr;
    SecretService* secretService = secret_service_get_sync(SECRET_SERVICE_OPEN_SESSION, nullptr, &error);
    if (!secretService) {
        const int status = statusFor(error, "connecting to the Secret Service");
        g_error_free(error);
        return {status, std::nullopt};
    }
    const QByteArray serviceText = service.toUtf8();
    const QByteArray accountText = account.toUtf8();
    GHashTable* attributes = secret_attributes_build(
        genericPasswordSchema(), "service", serviceText.constData(), "account", accountText.constData(), nullptr);
    const KeychainLookup lookup = lookUp(secretService, attributes);
    g_hash_table_unref(attributes);
    g_object_unref(secretService);
    return lookup;
}

int SecretServiceKeychain::add(const QString& service, const QString& account, const QByteArray& data)
{
    const QByteArray serviceText = service.toUtf8();
    const QByteArray accountText = account.toUtf8();
    const QByteArray label = QStringLiteral("Tolvane: %1 (%2)").arg(service, account).toUtf8();
    SecretValue* value = secret_value_new(data.constData(), data.size(), "application/octet-stream");
    GError* error = nullptr;
    const gboolean stored
        = secret_password_store_binary_sync(genericPasswordSchema(), SECRET_COLLECTION_DEFAULT, label.constData(),
            value, nullptr, &error, "service", serviceText.constData(), "account", accountText.constData(), nullptr);
    secret_value_unref(value);
    if (error) {
        const int status = statusFor(error, "storing a keyring item");
        g_error_free(error);
        return status;
    }
    return stored ? KeychainStatus::success : KeychainStatus::internalError;
}

int SecretServiceKeychain::remove(const QString& service, const QString& account)
{
    const QByteArray serviceText = service.toUtf8();
    const QByteArray accountText = account.toUtf8();
    GError* error = nullptr;
    const gboolean removed = secret_password_clear_sync(genericPasswordSchema(), nullptr, &error, "service",
        serviceText.constData(), "account", accountText.constData(), nullptr);
    if (error) {
        const int status = statusFor(error, "removing a keyring item");
        g_error_free(error);
        return status;
    }
    return removed ? KeychainStatus::success : KeychainStatus::itemNotFound;
}
