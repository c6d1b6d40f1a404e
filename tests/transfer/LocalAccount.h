#pragma once

#include "transfer/TasksRepositories.h"

#include <QTemporaryDir>

// The five local stores of one account in a folder of their own, keyed with a fixed key.
struct LocalAccount {
    QTemporaryDir folder;
    TasksRepositories repositories;

    explicit LocalAccount(char keyByte = '\x31');
};
