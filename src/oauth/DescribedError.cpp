#include "oauth/DescribedError.h"

DescribedError::DescribedError(
    QString description, QString domain, int code, std::shared_ptr<const DescribedError> underlying)
    : m_description(std::move(description))
    , m_domain(std::move(domain))
    , m_code(code)
    , m_underlying(std::move(underlying))
    , m_what(m_description.toStdString())
{
}
