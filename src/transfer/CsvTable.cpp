#include "transfer/CsvTable.h"

namespace CsvTable {

QString line(const QStringList& fields)
{
    QStringList quoted;
    quoted.reserve(fields.size());
    for (const QString& field : fields) {
        const bool needsQuotes = field.contains(QLatin1Char(',')) || field.contains(QLatin1Char('"'))
            || field.contains(QLatin1Char('\n')) || field.contains(QLatin1Char('\r'));
        quoted.append(needsQuotes
                ? QLatin1Char('"') + QString(field).replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"')
                : field);
    }
    return quoted.join(QLatin1Char(',')) + QStringLiteral("\r\n");
}

QList<QStringList> parse(const QString& text)
{
    QList<QStringList> records;
    QStringList record;
    QString field;
    bool inQuotes = false;
    bool any = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (inQuotes) {
            if (c == QLatin1Char('"') && i + 1 < text.size() && text.at(i + 1) == QLatin1Char('"')) {
                field.append(c);
                ++i;
            } else if (c == QLatin1Char('"')) {
                inQuotes = false;
            } else {
                field.append(c);
            }
            continue;
        }
        if (c == QLatin1Char('"')) {
            inQuotes = true;
            any = true;
        } else if (c == QLatin1Char(',')) {
            record.append(field);
            field.clear();
            any = true;
        } else if (c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
            if (c == QLatin1Char('\r') && i + 1 < text.size() && text.at(i + 1) == QLatin1Char('\n'))
                ++i;
            if (any || !field.isEmpty()) {
                record.append(field);
                records.append(record);
            }
            record.clear();
            field.clear();
            any = false;
        } else {
            field.append(c);
            any = true;
        }
    }
    if (any || !field.isEmpty()) {
        record.append(field);
        records.append(record);
    }
    return records;
}

} // namespace CsvTable
