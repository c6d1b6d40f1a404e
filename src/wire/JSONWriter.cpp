#include "wire/JSONWriter.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char hexDigits[] = "0123456789abcdef";

// The characters are written through a raw pointer into room made beforehand: appending them one
// by one to the string costs more than everything else a list answer does.

// One ASCII character as QJsonDocument writes it: quotes, backslashes and control characters
// escaped, the short forms where JSON has them. At most six bytes.
char* putAscii(char* out, unsigned char c)
{
    if (c >= 0x20 && c != '"' && c != '\\') {
        *out++ = char(c);
        return out;
    }
    *out++ = '\\';
    switch (c) {
    case '"':
        *out++ = '"';
        return out;
    case '\\':
        *out++ = '\\';
        return out;
    case '\b':
        *out++ = 'b';
        return out;
    case '\f':
        *out++ = 'f';
        return out;
    case '\n':
        *out++ = 'n';
        return out;
    case '\r':
        *out++ = 'r';
        return out;
    case '\t':
        *out++ = 't';
        return out;
    default:
        break;
    }
    *out++ = 'u';
    *out++ = '0';
    *out++ = '0';
    *out++ = hexDigits[c >> 4];
    *out++ = hexDigits[c & 0xf];
    return out;
}

char* putUtf8(char* out, char32_t code)
{
    if (code < 0x800) {
        *out++ = char(0xc0 | (code >> 6));
        *out++ = char(0x80 | (code & 0x3f));
    } else if (code < 0x10000) {
        *out++ = char(0xe0 | (code >> 12));
        *out++ = char(0x80 | ((code >> 6) & 0x3f));
        *out++ = char(0x80 | (code & 0x3f));
    } else {
        *out++ = char(0xf0 | (code >> 18));
        *out++ = char(0x80 | ((code >> 12) & 0x3f));
        *out++ = char(0x80 | ((code >> 6) & 0x3f));
        *out++ = char(0x80 | (code & 0x3f));
    }
    return out;
}

void twoDigits(char* out, int value)
{
    out[0] = char('0' + value / 10);
    out[1] = char('0' + value % 10);
}

} // namespace

void JSONWriter::separate()
{
    if (m_needsComma)
        m_text += ',';
    m_needsComma = true;
}

JSONWriter& JSONWriter::beginObject()
{
    separate();
    m_text += '{';
    m_needsComma = false;
    return *this;
}

JSONWriter& JSONWriter::endObject()
{
    m_text += '}';
    m_needsComma = true;
    return *this;
}

JSONWriter& JSONWriter::beginArray()
{
    separate();
    m_text += '[';
    m_needsComma = false;
    return *this;
}

JSONWriter& JSONWriter::endArray()
{
    m_text += ']';
    m_needsComma = true;
    return *this;
}

JSONWriter& JSONWriter::key(std::string_view name)
{
    const std::size_t start = m_text.size();
    m_text.resize(start + name.size() + 4);
    char* out = m_text.data() + start;
    if (m_needsComma)
        *out++ = ',';
    *out++ = '"';
    out = std::copy(name.begin(), name.end(), out);
    *out++ = '"';
    *out++ = ':';
    m_text.resize(std::size_t(out - m_text.data()));
    // The value that follows needs no comma of its own.
    m_needsComma = false;
    return *this;
}

JSONWriter& JSONWriter::string(QStringView text)
{
    separate();
    const qsizetype size = text.size();
    const std::size_t start = m_text.size();
    // Six bytes per UTF-16 unit at most (an escape), and the quotes.
    m_text.resize(start + std::size_t(size) * 6 + 2);
    char* out = m_text.data() + start;
    *out++ = '"';
    const char16_t* units = text.utf16();
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t unit = units[i];
        if (unit < 0x80) {
            out = putAscii(out, static_cast<unsigned char>(unit));
        } else if (QChar::isHighSurrogate(unit) && i + 1 < size && QChar::isLowSurrogate(units[i + 1])) {
            out = putUtf8(out, QChar::surrogateToUcs4(unit, units[i + 1]));
            ++i;
        } else if (QChar::isSurrogate(unit)) {
            // A lone surrogate has no UTF-8 form; QJsonDocument writes it as an escape.
            const char escaped[] = {'\\', 'u', hexDigits[unit >> 12], hexDigits[(unit >> 8) & 0xf],
                hexDigits[(unit >> 4) & 0xf], hexDigits[unit & 0xf]};
            out = std::copy(std::begin(escaped), std::end(escaped), out);
        } else {
            out = putUtf8(out, unit);
        }
    }
    *out++ = '"';
    m_text.resize(std::size_t(out - m_text.data()));
    return *this;
}

JSONWriter& JSONWriter::string(std::string_view utf8)
{
    separate();
    const std::size_t start = m_text.size();
    m_text.resize(start + utf8.size() * 6 + 2);
    char* out = m_text.data() + start;
    *out++ = '"';
    for (const char c : utf8) {
        // Bytes of multi-byte sequences pass as they are.
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80)
            *out++ = c;
        else
            out = putAscii(out, byte);
    }
    *out++ = '"';
    m_text.resize(std::size_t(out - m_text.data()));
    return *this;
}

JSONWriter& JSONWriter::boolean(bool value)
{
    separate();
    m_text += value ? "true" : "false";
    return *this;
}

JSONWriter& JSONWriter::integer(qint64 value)
{
    separate();
    m_text += std::to_string(value);
    return *this;
}

JSONWriter& JSONWriter::null()
{
    separate();
    m_text += "null";
    return *this;
}

int JSONWriter::formatDate(qint64 secondsSinceEpoch, char* out)
{
    // Days to a civil date in the proleptic Gregorian calendar (Howard Hinnant's algorithm):
    // far cheaper than QDateTime's formatting, which lists pay once per row.
    qint64 days = secondsSinceEpoch / 86400;
    qint64 seconds = secondsSinceEpoch % 86400;
    if (seconds < 0) {
        seconds += 86400;
        --days;
    }
    days += 719468;
    const qint64 era = (days >= 0 ? days : days - 146096) / 146097;
    const qint64 dayOfEra = days - era * 146097;
    const qint64 yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const qint64 dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const qint64 shiftedMonth = (5 * dayOfYear + 2) / 153;
    const int day = int(dayOfYear - (153 * shiftedMonth + 2) / 5 + 1);
    const int month = int(shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9);
    const qint64 year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    if (year < 0 || year > 9999) {
        // Outside four-digit years, as QDateTime writes them; no stored date gets here.
        const QByteArray text = QDateTime::fromSecsSinceEpoch(secondsSinceEpoch, Qt::UTC)
                                    .toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))
                                    .toLatin1()
            + 'Z';
        const int length = int(qMin<qsizetype>(text.size(), 31));
        std::copy_n(text.constData(), length, out);
        return length;
    }
    twoDigits(out, int(year / 100));
    twoDigits(out + 2, int(year % 100));
    out[4] = '-';
    twoDigits(out + 5, month);
    out[7] = '-';
    twoDigits(out + 8, day);
    out[10] = 'T';
    twoDigits(out + 11, int(seconds / 3600));
    out[13] = ':';
    twoDigits(out + 14, int(seconds / 60 % 60));
    out[16] = ':';
    twoDigits(out + 17, int(seconds % 60));
    out[19] = 'Z';
    return 20;
}

JSONWriter& JSONWriter::date(const QDateTime& date)
{
    separate();
    // Whole seconds, rounded towards the past as QDateTime's own formatting does.
    const qint64 msecs = date.toMSecsSinceEpoch();
    const qint64 seconds = msecs / 1000 - (msecs % 1000 < 0 ? 1 : 0);
    char text[32];
    const int length = formatDate(seconds, text);
    m_text += '"';
    m_text.append(text, std::size_t(length));
    m_text += '"';
    return *this;
}

JSONWriter& JSONWriter::optionalString(const std::optional<QString>& text)
{
    return text ? string(*text) : null();
}

JSONWriter& JSONWriter::optionalDate(const std::optional<QDateTime>& value)
{
    return value ? date(*value) : null();
}
