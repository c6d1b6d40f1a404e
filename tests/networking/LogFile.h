#pragma once

#include <QFile>
#include <QRegularExpression>
#include <QStringList>

// The network log as the tests read it: what was appended since the last look.
class LogFile {
public:
    explicit LogFile(QString path)
        : m_path(std::move(path))
    {
        m_offset = QFile(m_path).size();
    }

    const QString& path() const { return m_path; }

    // The text appended since construction or the previous call.
    QString appended()
    {
        QFile file(m_path);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        file.seek(m_offset);
        const QByteArray data = file.readAll();
        m_offset += data.size();
        return QString::fromUtf8(data);
    }

    // Splits log text into records; every record must match the format, or an empty list comes back.
    static std::optional<QList<QRegularExpressionMatch>> records(const QString& text)
    {
        static const QRegularExpression record(
            QStringLiteral("\\[(\\d{4}-\\d{2}-\\d{2} \\d{2}:\\d{2}:\\d{2})\\]\nendpoint: ([^\n]*)\nrequest: "
                           "([^\n]*)\nresponse: ([^\n]*)\n"));
        QList<QRegularExpressionMatch> matches;
        qsizetype offset = 0;
        while (offset < text.size()) {
            const QRegularExpressionMatch match = record.match(
                text, offset, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
            if (!match.hasMatch())
                return std::nullopt;
            matches.append(match);
            offset = match.capturedEnd();
        }
        return matches;
    }

private:
    QString m_path;
    qint64 m_offset = 0;
};
