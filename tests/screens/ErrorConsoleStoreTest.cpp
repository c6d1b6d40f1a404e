#include "screens/common/ErrorConsoleStore.h"

#include "support/SettableClock.h"
#include "support/TestMain.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>

namespace {

// 14:00 UTC is 09:00 in the tests' zone.
const QDateTime nineInTheMorning(QDate(2026, 11, 21), QTime(14, 0), Qt::UTC);

} // namespace

class ErrorConsoleStoreTest : public QObject {
    Q_OBJECT

    QTemporaryDir scratch;
    std::shared_ptr<SettableClock> clock;
    std::unique_ptr<ErrorConsoleStore> console;
    std::optional<UserDefaults> defaults;

private Q_SLOTS:
    void init()
    {
        defaults.emplace(scratch.filePath(QStringLiteral("%1.conf").arg(QTest::currentTestFunction())));
        defaults->setValue(ErrorConsoleStore::isEnabledKey, true);
        clock = std::make_shared<SettableClock>(nineInTheMorning);
        console = std::make_unique<ErrorConsoleStore>(*defaults, clock);
    }

    void shouldStampEachLineWithTheLocalTime()
    {
        console->appendLine(QStringLiteral("ProjectsController.add failed: The project name cannot be empty"));
        clock->advance(61);
        console->appendLine(QStringLiteral("SupportController.sendMessage failed: no autorizado"));

        QCOMPARE(console->consoleText(),
            QStringLiteral("[2026-11-21 09:00:00] ProjectsController.add failed: The project name cannot be empty\n"
                           "[2026-11-21 09:01:01] SupportController.sendMessage failed: no autorizado"));
    }

    void shouldRecordNothingUnlessEnabled()
    {
        defaults->remove(ErrorConsoleStore::isEnabledKey);
        console->appendLine(QStringLiteral("dropped while absent"));
        defaults->setValue(ErrorConsoleStore::isEnabledKey, false);
        console->appendLine(QStringLiteral("dropped while off"));

        QCOMPARE(console->consoleText(), QString());
    }

    void shouldKeepWhatWasRecordedWhenSwitchedOff()
    {
        console->appendLine(QStringLiteral("kept"));
        defaults->setValue(ErrorConsoleStore::isEnabledKey, false);
        console->appendLine(QStringLiteral("dropped"));

        QCOMPARE(console->consoleText(), QStringLiteral("[2026-11-21 09:00:00] kept"));
    }

    void shouldKeepOnlyTheNewest500Lines()
    {
        for (int line = 1; line <= 501; ++line) {
            console->appendLine(QString::number(line));
            clock->advance(1);
        }

        const QStringList lines = console->consoleText().split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 500);
        QCOMPARE(lines.constFirst(), QStringLiteral("[2026-11-21 09:00:01] 2"));
        QCOMPARE(lines.constLast(), QStringLiteral("[2026-11-21 09:08:20] 501"));
    }

    void shouldListLinesInTimeOrderKeepingTiesInArrivalOrder()
    {
        console->appendLine(QStringLiteral("second"));
        clock->advance(-30);
        console->appendLine(QStringLiteral("first"));
        clock->advance(30);
        console->appendLine(QStringLiteral("third, same second as the second"));

        QCOMPARE(console->consoleText(),
            QStringLiteral("[2026-11-21 08:59:30] first\n"
                           "[2026-11-21 09:00:00] second\n"
                           "[2026-11-21 09:00:00] third, same second as the second"));
    }

    void shouldTakeAppendsFromManyThreadsWhole()
    {
        QList<QThread*> threads;
        for (int t = 0; t < 4; ++t) {
            threads.append(QThread::create([this, t] {
                for (int i = 0; i < 200; ++i)
                    console->appendLine(QStringLiteral("thread %1 line %2").arg(t).arg(i));
            }));
            threads.constLast()->start();
        }
        for (QThread* thread : threads) {
            thread->wait();
            delete thread;
        }

        const QStringList lines = console->consoleText().split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 500);
        for (const QString& line : lines)
            QVERIFY2(
                line.contains(QRegularExpression(QStringLiteral("^\\[2026-11-21 09:00:00\\] thread \\d line \\d+$"))),
                qPrintable(line));
    }
};

TOLVANE_TEST_MAIN(ErrorConsoleStoreTest)
#include "ErrorConsoleStoreTest.moc"
