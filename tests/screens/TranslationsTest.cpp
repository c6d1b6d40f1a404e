#include "support/TestMain.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

namespace {

QString sourceFile(const QString& relative)
{
    return QStringLiteral(TOLVANE_SOURCE_DIR "/") + relative;
}

QString readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

// Every text the screens ask for exists in English and in Spanish, and the compiled tables are
// the ones written from the shared table.
class TranslationsTest : public QObject {
    Q_OBJECT

    QSet<QString> usedIds;
    QHash<QString, QStringList> rows;

private Q_SLOTS:
    void initTestCase()
    {
        const QRegularExpression call(QStringLiteral("qtTrId\\(\"([^\"]+)\"\\)"));
        QDirIterator sources(sourceFile(QStringLiteral("src")), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
            QDir::Files, QDirIterator::Subdirectories);
        while (sources.hasNext()) {
            for (const QRegularExpressionMatch& match : call.globalMatch(readAll(sources.next())))
                usedIds.insert(match.captured(1));
        }
        const QStringList lines = readAll(sourceFile(QStringLiteral("i18n/strings.tsv"))).split(QLatin1Char('\n'));
        for (const QString& line : lines.mid(1)) {
            const QStringList columns = line.split(QLatin1Char('\t'));
            if (columns.size() == 3)
                rows.insert(columns.at(0), columns.mid(1));
        }
        QVERIFY(usedIds.size() > 50);
    }

    void shouldHaveBothLanguagesForEveryTextShown()
    {
        QStringList missing;
        for (const QString& id : std::as_const(usedIds)) {
            const QStringList texts = rows.value(id);
            if (texts.size() != 2 || texts.at(0).trimmed().isEmpty() || texts.at(1).trimmed().isEmpty())
                missing.append(id);
        }
        missing.sort();
        QCOMPARE(missing, QStringList());
    }

    void shouldCompileTheTablesFromTheSharedOne()
    {
        for (const QString& language : {QStringLiteral("en"), QStringLiteral("es")}) {
            const QString table = readAll(sourceFile(QStringLiteral("i18n/tolvane_%1.ts").arg(language)));
            for (auto row = rows.cbegin(); row != rows.cend(); ++row) {
                QVERIFY2(table.contains(QStringLiteral("<message id=\"%1\">").arg(row.key())),
                    qPrintable(
                        language + QLatin1Char(' ') + row.key() + QStringLiteral(": run scripts/update-translations")));
            }
        }
    }
};

TOLVANE_TEST_MAIN(TranslationsTest)
#include "TranslationsTest.moc"
