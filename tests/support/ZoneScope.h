#pragma once

#include <QByteArray>

#include <ctime>

// The process's time zone while it lives; local times in a test are that zone's.
class ZoneScope {
public:
    explicit ZoneScope(const QByteArray& zone)
        : m_previous(qgetenv("TZ"))
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~ZoneScope()
    {
        qputenv("TZ", m_previous);
        tzset();
    }
    ZoneScope(const ZoneScope&) = delete;
    ZoneScope& operator=(const ZoneScope&) = delete;

private:
    QByteArray m_previous;
};
