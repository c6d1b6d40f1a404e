#include "login/UserDatabase.h"

#include "wire/JSONCoding.h"

LoginResultEntity UserDatabase::open()
{
    return LoginResultEntity::success(UserDatabase {UserDefaults::standard()});
}

LoginResultEntity UserDatabase::load() const
{
    if (!userDefaults.contains(currentUserKey))
        return LoginResultEntity::domainFailure(QStringLiteral("No user is registered yet"));
    try {
        return LoginResultEntity::success(
            JSONCoding::decode<UserEntity>(userDefaults.value(currentUserKey).toString().toUtf8()));
    } catch (const DecodingError& error) {
        return LoginResultEntity::databaseFailure(error.localizedDescription());
    }
}

LoginResultEntity UserDatabase::save(const UserEntity& user) const
{
    // UserDefaults only names the file; a copy writes to the same one.
    UserDefaults(userDefaults).setValue(currentUserKey, QString::fromUtf8(JSONCoding::serialize(user.toJson())));
    return LoginResultEntity::success();
}

LoginResultEntity UserDatabase::delete_() const
{
    UserDefaults(userDefaults).remove(currentUserKey);
    return LoginResultEntity::success();
}
