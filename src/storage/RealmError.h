#pragma once

#include <QString>

#include <stdexcept>

// A failure of the encrypted store: opening, keying, a statement, setting its files aside.
class RealmError : public std::runtime_error {
public:
    // What the caller may do about it: a busy store is left alone and the operation fails; a
    // damaged one is set aside and started anew; one written by a newer version of the program is
    // left exactly as it is and the operation fails; anything else is reported as it is.
    enum class Kind { other, busy, damaged, newerVersion };

    explicit RealmError(const QString& description, Kind kind = Kind::other)
        : std::runtime_error(description.toStdString())
        , m_description(description)
        , m_kind(kind)
    {
    }

    const QString& localizedDescription() const { return m_description; }
    Kind kind() const { return m_kind; }

private:
    QString m_description;
    Kind m_kind;
};
