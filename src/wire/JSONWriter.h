#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>

#include <optional>
#include <string>
#include <string_view>

// Writes compact JSON text straight into a buffer, in the order the values are given. The output
// is the text QJsonDocument::Compact produces for the same values when keys are written in sorted
// order, so a DTO encodes to the same bytes either way, at a fraction of the cost: the server
// writes every row of a list through here.
//
//     JSONWriter out;
//     out.beginObject();
//     out.key("prjId").string(prjId);
//     out.key("prjShowEveryDay").boolean(true);
//     out.endObject();
//     send(out.text());
class JSONWriter {
public:
    void reserve(std::size_t bytes) { m_text.reserve(bytes); }
    const std::string& text() const& { return m_text; }
    std::string text() && { return std::move(m_text); }

    JSONWriter& beginObject();
    JSONWriter& endObject();
    JSONWriter& beginArray();
    JSONWriter& endArray();

    // A member name: plain ASCII that needs no escaping, as every key of the API is.
    JSONWriter& key(std::string_view name);

    JSONWriter& string(QStringView text);
    // UTF-8 text, copied as it is apart from escaping.
    JSONWriter& string(std::string_view utf8);
    JSONWriter& boolean(bool value);
    JSONWriter& integer(qint64 value);
    JSONWriter& null();
    // "2026-11-21T09:00:00Z": the instant in UTC, whole seconds.
    JSONWriter& date(const QDateTime& date);

    JSONWriter& optionalString(const std::optional<QString>& text);
    JSONWriter& optionalDate(const std::optional<QDateTime>& date);

    // Writes "yyyy-MM-ddTHH:mm:ssZ" for a count of seconds since the epoch into out (room for 32
    // bytes, no terminator is written) and answers its length.
    static int formatDate(qint64 secondsSinceEpoch, char* out);

private:
    void separate();

    std::string m_text;
    bool m_needsComma = false;
};
