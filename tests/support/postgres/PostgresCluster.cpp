#include "support/postgres/PostgresCluster.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <pwd.h>
#include <unistd.h>

namespace {

QString binaryDirectory()
{
    const QString configured = qEnvironmentVariable("TOLVANE_POSTGRES_BIN");
    if (!configured.isEmpty())
        return configured;
    QProcess config;
    config.start(QStringLiteral("pg_config"), {QStringLiteral("--bindir")});
    if (config.waitForFinished(10000) && config.exitCode() == 0) {
        const QString dir = QString::fromLocal8Bit(config.readAllStandardOutput()).trimmed();
        if (QFileInfo::exists(dir + QStringLiteral("/initdb")))
            return dir;
    }
    // Debian keeps the server programs out of PATH.
    const QDir debian(QStringLiteral("/usr/lib/postgresql"));
    QStringList versions = debian.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    std::sort(
        versions.begin(), versions.end(), [](const QString& a, const QString& b) { return a.toInt() > b.toInt(); });
    for (const QString& version : versions) {
        const QString dir = debian.filePath(version + QStringLiteral("/bin"));
        if (QFileInfo::exists(dir + QStringLiteral("/initdb")))
            return dir;
    }
    return {};
}

} // namespace

PostgresCluster::PostgresCluster()
    // A short path: the socket's full name must fit in 107 bytes.
    : m_root(QStringLiteral("/tmp/tolvane-pg.XXXXXX"))
    , m_bin(binaryDirectory())
{
    if (!m_root.isValid() || m_bin.isEmpty()) {
        m_error = QStringLiteral("no temporary directory or no PostgreSQL server programs");
        return;
    }
    if (geteuid() == 0) {
        const passwd* postgres = getpwnam("postgres");
        if (!postgres || chown(m_root.path().toLocal8Bit().constData(), postgres->pw_uid, postgres->pw_gid) != 0) {
            m_error = QStringLiteral("running as root and there is no postgres user to run the cluster as");
            return;
        }
        m_asPostgresUser = true;
    }
    if (!run(QStringLiteral("initdb"),
            {QStringLiteral("-D"), m_root.filePath(QStringLiteral("data")), QStringLiteral("-A"),
                QStringLiteral("trust"), QStringLiteral("-U"), QStringLiteral("tolvane"), QStringLiteral("-E"),
                QStringLiteral("UTF8"), QStringLiteral("--locale=C"), QStringLiteral("--no-sync")}))
        return;
    start();
}

PostgresCluster::~PostgresCluster()
{
    if (m_running)
        stop();
}

bool PostgresCluster::start()
{
    // No TCP at all; fsync off because the data is thrown away anyway.
    const QString options = QStringLiteral("-k %1 -c listen_addresses='' -c fsync=off -c full_page_writes=off "
                                           "-c max_connections=200")
                                .arg(m_root.path());
    m_running = run(QStringLiteral("pg_ctl"),
        {QStringLiteral("-D"), m_root.filePath(QStringLiteral("data")), QStringLiteral("-l"),
            m_root.filePath(QStringLiteral("server.log")), QStringLiteral("-o"), options, QStringLiteral("-w"),
            QStringLiteral("-t"), QStringLiteral("60"), QStringLiteral("start")});
    return m_running;
}

bool PostgresCluster::stop()
{
    const bool stopped = run(QStringLiteral("pg_ctl"),
        {QStringLiteral("-D"), m_root.filePath(QStringLiteral("data")), QStringLiteral("-m"), QStringLiteral("fast"),
            QStringLiteral("-w"), QStringLiteral("stop")});
    if (stopped)
        m_running = false;
    return stopped;
}

QString PostgresCluster::url(const QString& database) const
{
    return QStringLiteral("host=%1 user=tolvane dbname=%2").arg(m_root.path(), database);
}

QString PostgresCluster::createDatabase(const QString& name)
{
    if (!m_running
        || !run(QStringLiteral("psql"),
            {QStringLiteral("-q"), QStringLiteral("-v"), QStringLiteral("ON_ERROR_STOP=1"), QStringLiteral("-d"),
                url(QStringLiteral("postgres")), QStringLiteral("-c"),
                QStringLiteral("CREATE DATABASE \"%1\"").arg(name)}))
        return {};
    return url(name);
}

bool PostgresCluster::run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    const QString path = m_bin + QLatin1Char('/') + program;
    if (m_asPostgresUser)
        process.start(QStringLiteral("runuser"),
            QStringList {QStringLiteral("-u"), QStringLiteral("postgres"), QStringLiteral("--"), path} + arguments);
    else
        process.start(path, arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        m_error = program + QStringLiteral(" failed: ") + QString::fromLocal8Bit(process.readAll());
        return false;
    }
    return true;
}
