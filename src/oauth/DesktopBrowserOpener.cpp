#include "oauth/DesktopBrowserOpener.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QThread>

bool DesktopBrowserOpener::open(const QUrl& url)
{
    QCoreApplication* application = QCoreApplication::instance();
    if (!application)
        return false;
    if (QThread::currentThread() == application->thread())
        return QDesktopServices::openUrl(url);
    // Sign-in runs on a worker; the platform's URL handler belongs to the GUI thread, which stays
    // free while the worker waits for the redirect, so the request is posted rather than awaited.
    QMetaObject::invokeMethod(
        application, [url] { QDesktopServices::openUrl(url); }, Qt::QueuedConnection);
    return true;
}
