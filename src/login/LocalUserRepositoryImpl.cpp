#include "login/LocalUserRepositoryImpl.h"

LocalUserRepositoryImpl::LocalUserRepositoryImpl(UserDatabase database)
    : database(std::move(database))
{
}

LoginResultEntity LocalUserRepositoryImpl::getCurrentUser()
{
    return database.load();
}

LoginResultEntity LocalUserRepositoryImpl::saveUser(const UserEntity& user)
{
    return database.save(user);
}

LoginResultEntity LocalUserRepositoryImpl::deleteUser()
{
    return database.delete_();
}
