#pragma once

#include <QString>

#include <stdexcept>

// A JSON text or value that does not fit the type it is decoded into. The description names what
// was expected and where, for the decoding case of APIError.
class DecodingError : public std::runtime_error {
public:
    explicit DecodingError(const QString& description)
        : std::runtime_error(description.toStdString())
        , m_description(description)
    {
    }

    const QString& localizedDescription() const { return m_description; }

private:
    QString m_description;
};
