#include "platform/SecretServiceKeychain.h"

#include "platform/Logging.h"

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
        0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
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

// success when the default collection can be read without a prompt (or there is none, so no
// item can hide in it); a failure status otherwise.
int defaultCollectionStatus()
{
    GError* error = nullptr;
    SecretService* service = secret_service_get_sync(SECRET_SERVICE_LOAD_COLLECTIONS, nullptr, &error);
    if (!service) {
        const int status = statusFor(error, "connecting to the Secret Service");
        g_error_free(error);
        return status;
    }
    SecretCollection* collection =
        secret_collection_for_alias_sync(service, SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, nullptr, &error);
    g_object_unref(service);
    if (error) {
        const int status = statusFor(error, "reading the default collection");
        g_error_free(error);
        return status;
    }
    if (!collection)
        return KeychainStatus::success;
    const bool locked = secret_collection_get_locked(collection);
    g_object_unref(collection);
    if (locked) {
        qCWarning(lcKeychain, "the default keyring collection is locked");
        return KeychainStatus::interactionNotAllowed;
    }
    return KeychainStatus::success;
}

} // namespace

KeychainLookup SecretServiceKeychain::copyMatching(const QString& service, const QString& account)
{
    if (const int status = defaultCollectionStatus(); status != KeychainStatus::success)
        return {status, std::nullopt};

    const QByteArray serviceText = service.toUtf8();
    const QByteArray accountText = account.toUtf8();
    GError* error = nullptr;
    SecretValue* value = secret_password_lookup_binary_sync(genericPasswordSchema(), nullptr, &error, "service",
                                                            serviceText.constData(), "account",
                                                            accountText.constData(), nullptr);
    if (error) {
        const int status = statusFor(error, "looking up a keyring item");
        g_error_free(error);
        return {status, std::nullopt};
    }
    if (!value)
        return {KeychainStatus::itemNotFound, std::nullopt};

    gsize length = 0;
    const gchar* bytes = secret_value_get(value, &length);
    KeychainLookup found{KeychainStatus::success, QByteArray(bytes, qsizetype(length))};
    secret_value_unref(value);
    return found;
}

int SecretServiceKeychain::add(const QString& service, const QString& account, const QByteArray& data)
{
    const QByteArray serviceText = service.toUtf8();
    const QByteArray accountText = account.toUtf8();
    const QByteArray label = QStringLiteral("Tolvane: %1 (%2)").arg(service, account).toUtf8();
    SecretValue* value = secret_value_new(data.constData(), data.size(), "application/octet-stream");
    GError* error = nullptr;
    const gboolean stored = secret_password_store_binary_sync(
        genericPasswordSchema(), SECRET_COLLECTION_DEFAULT, label.constData(), value, nullptr, &error, "service",
        serviceText.constData(), "account", accountText.constData(), nullptr);
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
    const gboolean removed =
        secret_password_clear_sync(genericPasswordSchema(), nullptr, &error, "service", serviceText.constData(),
                                   "account", accountText.constData(), nullptr);
    if (error) {
        const int status = statusFor(error, "removing a keyring item");
        g_error_free(error);
        return status;
    }
    return removed ? KeychainStatus::success : KeychainStatus::itemNotFound;
}
