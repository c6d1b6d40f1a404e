#pragma once

#include <QString>

#include <exception>
#include <string>

// The base of every error the meetings module throws, so a screen can show any of them the same
// way: the message and the console line.
class MeetingsError : public std::exception {
public:
    // The text shown to the user.
    const QString& localizedDescription() const { return m_description; }
    const char* what() const noexcept override { return m_what.c_str(); }

protected:
    explicit MeetingsError(QString description)
        : m_description(std::move(description))
        , m_what(m_description.toStdString())
    {
    }

private:
    QString m_description;
    std::string m_what;
};
