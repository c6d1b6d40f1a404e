#pragma once

#include <QString>

#include <exception>
#include <memory>
#include <string>

// An error that says what went wrong, in which domain, under which code, and what caused it.
// Sign-in failures travel through several layers (the browser redirect, the token endpoint, the
// transport, the keyring); keeping the cause chained lets the account screens show all of it.
class DescribedError : public std::exception {
public:
    DescribedError(
        QString description, QString domain, int code, std::shared_ptr<const DescribedError> underlying = {});

    const QString& localizedDescription() const { return m_description; }
    const QString& domain() const { return m_domain; }
    int code() const { return m_code; }
    // The error that caused this one, if any.
    const DescribedError* underlying() const { return m_underlying.get(); }

    const char* what() const noexcept override { return m_what.c_str(); }

private:
    QString m_description;
    QString m_domain;
    int m_code;
    std::shared_ptr<const DescribedError> m_underlying;
    std::string m_what;
};
