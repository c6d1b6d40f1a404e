#pragma once

#include <QString>

#include <stdexcept>

// A failure of the encrypted store: opening, keying, a statement, deleting its files.
class RealmError : public std::runtime_error {
public:
    explicit RealmError(const QString& description)
        : std::runtime_error(description.toStdString())
        , m_description(description)
    {
    }

    const QString& localizedDescription() const { return m_description; }

private:
    QString m_description;
};
