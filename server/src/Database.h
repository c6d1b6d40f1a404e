#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <pqxx/pqxx>
#include <string>
#include <vector>

// A fixed set of PostgreSQL connections shared by the request workers. A connection that broke is
// replaced on its next use, so a database restart costs the requests in flight, not the server.
class ConnectionPool {
public:
    ConnectionPool(std::string url, std::size_t size);

    class Lease {
    public:
        Lease(ConnectionPool& pool, std::unique_ptr<pqxx::connection> connection);
        ~Lease();
        Lease(const Lease&) = delete;
        Lease& operator=(const Lease&) = delete;
        pqxx::connection& operator*() { return *m_connection; }
        pqxx::connection* operator->() { return m_connection.get(); }

    private:
        ConnectionPool& m_pool;
        std::unique_ptr<pqxx::connection> m_connection;
    };

    // Waits for a free connection; throws pqxx errors when a new one cannot be opened.
    Lease acquire();

private:
    void release(std::unique_ptr<pqxx::connection> connection);

    std::string m_url;
    std::mutex m_mutex;
    std::condition_variable m_freed;
    std::vector<std::unique_ptr<pqxx::connection>> m_idle;
    std::size_t m_open = 0;
    std::size_t m_size;
};

// Brings the schema up to date: every migration not yet recorded in schema_migrations is applied
// in one transaction with its record, under an advisory lock so that servers starting together
// do not race. Returns how many were applied.
int applyMigrations(pqxx::connection& connection);
