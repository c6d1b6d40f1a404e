#include "SingleInstance.h"

#include "platform/Logging.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

namespace {

const QString applicationInterface = QStringLiteral("org.freedesktop.Application");
// A login start finding Tolvane already running: nothing to show.
const QString backgroundKey = QStringLiteral("tolvane-background");

// The token the launcher handed this process, passed on so the window manager lets the running
// window take the focus.
QVariantMap launchPlatformData()
{
    QVariantMap data;
    const QByteArray activationToken = qgetenv("XDG_ACTIVATION_TOKEN");
    if (!activationToken.isEmpty())
        data.insert(QStringLiteral("activation-token"), QString::fromUtf8(activationToken));
    const QByteArray startupId = qgetenv("DESKTOP_STARTUP_ID");
    if (!startupId.isEmpty())
        data.insert(QStringLiteral("desktop-startup-id"), QString::fromUtf8(startupId));
    return data;
}

} // namespace

SingleInstance::SingleInstance(QObject* parent)
    : QObject(parent)
{
}

SingleInstance::Claim SingleInstance::claim(const LaunchRequest& request)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qCWarning(lcApp) << "no session bus: another Tolvane window cannot be detected";
        return Claim::first;
    }
    // The object first, so that a launch racing this one finds it as soon as the name is ours.
    bus.registerObject(objectPath, this, QDBusConnection::ExportAllSlots);
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> registered = bus.interface()->registerService(
        serviceName, QDBusConnectionInterface::DontQueueService, QDBusConnectionInterface::DontAllowReplacement);
    if (registered.isValid() && registered.value() == QDBusConnectionInterface::ServiceRegistered)
        return Claim::first;
    bus.unregisterObject(objectPath);

    QDBusMessage activate
        = QDBusMessage::createMethodCall(serviceName, objectPath, applicationInterface, QStringLiteral("Activate"));
    QVariantMap platformData = launchPlatformData();
    platformData.insert(request.toPlatformData());
    if (request.background && !request.asksForAnything())
        platformData.insert(backgroundKey, true);
    activate << platformData;
    const QDBusMessage answer = bus.call(activate, QDBus::Block, 10000);
    if (answer.type() == QDBusMessage::ErrorMessage) {
        // The other one is stuck or quitting: better two windows than none.
        qCWarning(lcApp) << "the running Tolvane did not answer:" << answer.errorMessage();
        return Claim::first;
    }
    qCInfo(lcApp) << "Tolvane is already running; its window was brought to the front";
    return Claim::handedOver;
}

void SingleInstance::Activate(const QVariantMap& platformData)
{
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    if (!token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    if (platformData.value(backgroundKey).toBool()) {
        qCInfo(lcApp) << "another launch of Tolvane, in the background, found this one running";
        return;
    }
    qCInfo(lcApp) << "another launch of Tolvane asked for this window";
    Q_EMIT activationRequested();
    const LaunchRequest request = LaunchRequest::fromPlatformData(platformData);
    if (request.asksForAnything())
        Q_EMIT launchRequested(request);
}

void SingleInstance::Open(const QStringList&, const QVariantMap& platformData)
{
    Activate(platformData);
}

void SingleInstance::ActivateAction(const QString&, const QVariantList&, const QVariantMap& platformData)
{
    Activate(platformData);
}
