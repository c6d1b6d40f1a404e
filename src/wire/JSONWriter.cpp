#include "wire/JSONWriter.h"

namespace {

constexpr char hexDigits[] = "0123456789abcdef";

// One ASCII character as QJsonDocument writes it: quotes, backslashes and control characters
// escaped, the short forms where JSON has them.
void appendAscii(std::string& out, char c)
{
    switch (c) {
    case '"':
        out += "\\\"";
        return;
    case '\\':
        out += "\\\\";
        return;
    case '\b':
        out += "\\b";
        return;
    case '\f':
        out += "\\f";
        return;
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        break;
    }
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20) {
        const char escaped[] = {'\\', 'u', '0', '0', hexDigits[byte >> 4], hexDigits[byte & 0xf]};
        out.append(escaped, sizeof escaped);
    } else {
        out += c;
    }
}

void appendUtf8(std::string& out, char32_t code)
{
    if (code < 0x800) {
        out += char(0xc0 | (code >> 6));
        out += char(0x80 | (code & 0x3f));
    } else if (code < 0x10000) {
        out += char(0xe0 | (code >> 12));
        out += char(0x80 | ((code >> 6) & 0x3f));
        out += char(0x80 | (code & 0x3f));
    } else {
        out += char(0xf0 | (code >> 18));
        out += char(0x80 | ((code >> 12) & 0x3f));
        out += char(0x80 | ((code >> 6) & 0x3f));
        out += char(0x80 | (code & 0x3f));
    }
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
    separate();
    m_text += '"';
    m_text += name;
    m_text += "\":";
    // The value that follows needs no comma of its own.
    m_needsComma = false;
    return *this;
}

JSONWriter& JSONWriter::string(QStringView text)
{
    separate();
    m_text += '"';
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t unit = text[i].unicode();
        if (unit < 0x80) {
            appendAscii(m_text, char(unit));
        } else if (QChar::isHighSurrogate(unit) && i + 1 < size && QChar::isLowSurrogate(text[i + 1].unicode())) {
            appendUtf8(m_text, QChar::surrogateToUcs4(unit, text[i + 1].unicode()));
            ++i;
        } else if (QChar::isSurrogate(unit)) {
            // A lone surrogate has no UTF-8 form; QJsonDocument writes it as an escape.
            const char escaped[] = {'\\', 'u', hexDigits[unit >> 12], hexDigits[(unit >> 8) & 0xf],
                hexDigits[(unit >> 4) & 0xf], hexDigits[unit & 0xf]};
            m_text.append(escaped, sizeof escaped);
        } else {
            appendUtf8(m_text, unit);
        }
    }
    m_text += '"';
    return *this;
}

JSONWriter& JSONWriter::string(std::string_view utf8)
{
    separate();
    m_text += '"';
    for (const char c : utf8)
        appendAscii(m_text, c);
    m_text += '"';
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
