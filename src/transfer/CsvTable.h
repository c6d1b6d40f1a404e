#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// Comma-separated values as RFC 4180 writes them: fields with commas, quotes or line breaks in
// double quotes, quotes doubled, lines ended by CRLF.
namespace CsvTable {

QString line(const QStringList& fields);
// Every record of the text, the header included; quoted fields may span lines.
QList<QStringList> parse(const QString& text);

} // namespace CsvTable
