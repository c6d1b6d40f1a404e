#include "Database.h"

#include "Log.h"
#include "Migrations.h"

ConnectionPool::ConnectionPool(std::string url, std::size_t size)
    : m_url(std::move(url))
    , m_size(size)
{
}

ConnectionPool::Lease::Lease(ConnectionPool& pool, std::unique_ptr<pqxx::connection> connection)
    : m_pool(pool)
    , m_connection(std::move(connection))
{
}

ConnectionPool::Lease::~Lease()
{
    m_pool.release(std::move(m_connection));
}

namespace {

// Whether the server still holds the connection's other end. libpqxx 6 leaks the result of a
// statement sent over a connection the server has closed (it asks the dead connection for its
// encoding before taking the result over), and such a statement fails anyway. Reading what
// arrived while the connection sat in the pool notices the close first: the first read takes
// the server's farewell message, the second finds the end of the stream.
bool stillConnected(pqxx::connection& connection)
{
    try {
        for (int read = 0; read < 2 && connection.is_open(); ++read)
            connection.get_notifs();
    } catch (const pqxx::failure&) {
        return false;
    }
    return connection.is_open();
}

} // namespace

ConnectionPool::Lease ConnectionPool::acquire()
{
    std::unique_lock lock(m_mutex);
    m_freed.wait(lock, [this] { return !m_idle.empty() || m_open < m_size; });
    // Either a pooled connection or room for a new one; the slot is this caller's from here on.
    std::unique_ptr<pqxx::connection> connection;
    if (!m_idle.empty()) {
        connection = std::move(m_idle.back());
        m_idle.pop_back();
    } else {
        ++m_open;
    }
    lock.unlock();
    if (connection && stillConnected(*connection))
        return Lease(*this, std::move(connection));
    connection.reset();
    try {
        return Lease(*this, std::make_unique<pqxx::connection>(m_url));
    } catch (...) {
        lock.lock();
        --m_open;
        m_freed.notify_one();
        throw;
    }
}

void ConnectionPool::release(std::unique_ptr<pqxx::connection> connection)
{
    const std::lock_guard lock(m_mutex);
    if (connection && connection->is_open())
        m_idle.push_back(std::move(connection));
    else
        --m_open;
    m_freed.notify_one();
}

int applyMigrations(pqxx::connection& connection)
{
    pqxx::work transaction(connection);
    // Any fixed number will do; it only has to be the same in every server process.
    transaction.exec("SELECT pg_advisory_xact_lock(7042951)");
    transaction.exec("CREATE TABLE IF NOT EXISTS schema_migrations (version integer PRIMARY KEY, "
                     "name text NOT NULL, applied_at timestamptz NOT NULL DEFAULT now())");
    int applied = 0;
    for (const Migration& migration : migrations()) {
        const pqxx::result done
            = transaction.exec_params("SELECT 1 FROM schema_migrations WHERE version = $1", migration.version);
        if (!done.empty())
            continue;
        transaction.exec(migration.sql);
        transaction.exec_params("INSERT INTO schema_migrations (version, name) VALUES ($1, $2)", migration.version,
            std::string(migration.name));
        slog::info(std::string("applied migration ") + migration.name);
        ++applied;
    }
    transaction.commit();
    return applied;
}
