#pragma once

#include <QString>
#include <QTemporaryDir>

// A throwaway PostgreSQL cluster for one test executable: initdb into a temporary directory and
// pg_ctl start, listening only on a Unix socket in that directory, with trust authentication for
// its one superuser. The server binaries are found through TOLVANE_POSTGRES_BIN, then
// pg_config, then Debian's /usr/lib/postgresql/<version>/bin. PostgreSQL refuses to run as root,
// so under root the cluster belongs to the "postgres" system user and runs as it.
class PostgresCluster {
public:
    PostgresCluster();
    ~PostgresCluster();
    PostgresCluster(const PostgresCluster&) = delete;
    PostgresCluster& operator=(const PostgresCluster&) = delete;

    // Whether the cluster is running; when not, error() says why.
    bool isRunning() const { return m_running; }
    const QString& error() const { return m_error; }

    // A new empty database; returns its libpq connection string, empty on failure.
    QString createDatabase(const QString& name);
    // The connection string of a database created earlier.
    QString url(const QString& database) const;

    bool stop();
    bool start();

private:
    bool run(const QString& program, const QStringList& arguments);

    QTemporaryDir m_root;
    QString m_bin;
    bool m_asPostgresUser = false;
    bool m_running = false;
    QString m_error;
};
