#include "transfer/BitacoraMarkdownExport.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

QString safeFileName(const QString& name)
{
    static const QRegularExpression unsafe(QStringLiteral(R"([/\\:*?"<>|\x00-\x1f])"));
    QString safe = QString(name).replace(unsafe, QStringLiteral("_")).trimmed();
    if (safe.isEmpty() || safe.startsWith(QLatin1Char('.')))
        safe.prepend(QLatin1Char('_'));
    return safe.left(120);
}

} // namespace

namespace BitacoraMarkdownExport {

QMap<QString, QString> files(const TasksSnapshot& snapshot)
{
    QMap<QString, QString> result;
    for (const ProjectEntity& project : snapshot.projects) {
        QList<BitacoraEntryEntity> entries;
        for (const BitacoraEntryEntity& entry : snapshot.bitacora) {
            if (entry.prjId == project.prjId)
                entries.append(entry);
        }
        std::stable_sort(
            entries.begin(), entries.end(), [](const BitacoraEntryEntity& a, const BitacoraEntryEntity& b) {
                return a.bteDate.toLocalTime().date() < b.bteDate.toLocalTime().date();
            });
        QString text = QStringLiteral("# ") + project.prjName + QStringLiteral("\n");
        if (!project.prjDescription.isEmpty())
            text += QStringLiteral("\n") + project.prjDescription + QStringLiteral("\n");
        QDate day;
        for (const BitacoraEntryEntity& entry : std::as_const(entries)) {
            const QDate entryDay = entry.bteDate.toLocalTime().date();
            if (entryDay != day) {
                day = entryDay;
                text += QStringLiteral("\n## ") + day.toString(Qt::ISODate) + QStringLiteral("\n");
            }
            text += QStringLiteral("\n") + entry.bteContent.trimmed() + QStringLiteral("\n");
        }
        QString name = safeFileName(project.prjName) + QStringLiteral(".md");
        for (int n = 2; result.contains(name); ++n)
            name = safeFileName(project.prjName) + QStringLiteral(" (%1).md").arg(n);
        result.insert(name, text);
    }
    return result;
}

} // namespace BitacoraMarkdownExport
