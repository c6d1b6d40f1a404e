#pragma once

#include <QString>

#include <stdexcept>

// The exchange did not complete: no connection, a time-out, a connection closed early.
class UrlSessionError : public std::runtime_error {
public:
    explicit UrlSessionError(const QString& description)
        : std::runtime_error(description.toStdString())
        , m_description(description)
    {
    }

    const QString& localizedDescription() const { return m_description; }

private:
    QString m_description;
};
