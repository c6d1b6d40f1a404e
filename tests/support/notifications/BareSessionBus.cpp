#include "support/notifications/BareSessionBus.h"

#include <QDBusError>
#include <QDir>
#include <QFile>
#include <QUuid>

namespace {

QByteArray configuration(const QString& socketFolder, const QString& serviceFolder)
{
    return QByteArrayLiteral(R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=)")
        + socketFolder.toUtf8() + QByteArrayLiteral(R"(</listen>
  <auth>EXTERNAL</auth>
  <servicedir>)")
        + serviceFolder.toUtf8() + QByteArrayLiteral(R"(</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)");
}

} // namespace

BareSessionBus::BareSessionBus()
    : m_connectionName(QStringLiteral("bare-session-bus-") + QUuid::createUuid().toString(QUuid::Id128))
{
}

BareSessionBus::~BareSessionBus()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
    if (m_daemon.state() != QProcess::NotRunning) {
        m_daemon.terminate();
        if (!m_daemon.waitForFinished(10000))
            m_daemon.kill();
        m_daemon.waitForFinished();
    }
}

bool BareSessionBus::start()
{
    const QDir folder(m_folder.path());
    if (!m_folder.isValid() || !folder.mkpath(QStringLiteral("services")) || !folder.mkpath(QStringLiteral("socket"))) {
        m_error = QStringLiteral("no temporary folder");
        return false;
    }
    QFile config(folder.filePath(QStringLiteral("bus.conf")));
    if (!config.open(QIODevice::WriteOnly)
        || config.write(
               configuration(folder.filePath(QStringLiteral("socket")), folder.filePath(QStringLiteral("services"))))
            < 0) {
        m_error = QStringLiteral("the bus configuration cannot be written");
        return false;
    }
    config.close();

    m_daemon.start(QStringLiteral("dbus-daemon"),
        {QStringLiteral("--config-file=") + config.fileName(), QStringLiteral("--nofork"),
            QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
    // The daemon prints its address once it listens.
    QByteArray address;
    while (!address.contains('\n') && m_daemon.waitForReadyRead(30000))
        address += m_daemon.readAllStandardOutput();
    if (!address.contains('\n')) {
        m_error
            = QStringLiteral("dbus-daemon did not start: ") + QString::fromLocal8Bit(m_daemon.readAllStandardError());
        return false;
    }
    const QDBusConnection bus = QDBusConnection::connectToBus(QString::fromUtf8(address.trimmed()), m_connectionName);
    if (!bus.isConnected()) {
        m_error = bus.lastError().message();
        return false;
    }
    return true;
}

QDBusConnection BareSessionBus::connection() const
{
    return QDBusConnection(m_connectionName);
}
