#pragma once

#include <QString>

// An exclusive advisory lock on the folder of the stores (the file "stores.lock" in it), held
// for the lifetime of the object. Making a key, creating a store file and setting an unreadable
// one aside happen under it, so that two Tolvane processes (or two threads) starting together
// agree on one key and one file. The kernel drops the lock when its holder dies.
//
// A thread that already holds the lock of a folder may take it again; the inner one is a no-op.
class StoreFolderLock {
public:
    static inline const QString fileName = QStringLiteral("stores.lock");

    // Waits for the lock; throws RealmError when the lock file cannot be opened.
    explicit StoreFolderLock(const QString& folder);
    ~StoreFolderLock();
    StoreFolderLock(const StoreFolderLock&) = delete;
    StoreFolderLock& operator=(const StoreFolderLock&) = delete;

    // The folder that holds a store file.
    static QString folderOf(const QString& storeFile);

private:
    QString m_folder;
    int m_descriptor = -1;
};
