#include "rituals/Autostart.h"

#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

// The login start entry in the folder the desktop reads, $XDG_CONFIG_HOME/autostart.
class AutostartTest : public QObject {
    Q_OBJECT

    QTemporaryDir config;

    static QString read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

private Q_SLOTS:
    void init()
    {
        QVERIFY(config.isValid());
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(config.path()));
    }

    void shouldWriteAndRemoveTheEntry()
    {
        const QString path = config.path() + QStringLiteral("/autostart/com.quorvel.tolvane.desktop");
        QCOMPARE(Autostart::entryPath(), path);
        const Autostart autostart(QStringLiteral("/usr/bin/tolvane"));
        QVERIFY(!autostart.isEnabled());
        // Turning off what is not on is no failure.
        QVERIFY(autostart.setEnabled(false));

        QString error;
        QVERIFY2(autostart.setEnabled(true, &error), qPrintable(error));
        QVERIFY(autostart.isEnabled());
        const QString entry = read(path);
        QVERIFY(entry.startsWith(QStringLiteral("[Desktop Entry]\n")));
        const QStringList lines = entry.split(QLatin1Char('\n'));
        QVERIFY(lines.contains(QStringLiteral("Type=Application")));
        QVERIFY(lines.contains(QStringLiteral("Exec=/usr/bin/tolvane --background")));
        QVERIFY(lines.contains(QStringLiteral("X-GNOME-Autostart-enabled=true")));
        QCOMPARE(QFile(path).permissions() & QFileDevice::WriteOther, QFileDevice::Permissions());

        // Written again, it is the same single file.
        QVERIFY(autostart.setEnabled(true));
        QCOMPARE(QDir(config.path() + QStringLiteral("/autostart")).entryList(QDir::Files).size(), 1);

        QVERIFY(autostart.setEnabled(false));
        QVERIFY(!QFile::exists(path));
        QVERIFY(!autostart.isEnabled());
    }

    void shouldQuoteAProgramPathTheLoginSessionWouldSplit()
    {
        QCOMPARE(Autostart(QStringLiteral("/home/ana/my apps/tolvane"))
                     .entryText()
                     .split(QLatin1Char('\n'))
                     .filter(QStringLiteral("Exec="))
                     .constFirst(),
            QStringLiteral("Exec=\"/home/ana/my apps/tolvane\" --background"));
        QCOMPARE(Autostart(QStringLiteral("/opt/100%/$x\"y"))
                     .entryText()
                     .split(QLatin1Char('\n'))
                     .filter(QStringLiteral("Exec="))
                     .constFirst(),
            QStringLiteral("Exec=\"/opt/100%%/\\$x\\\"y\" --background"));
    }

    void shouldSayWhyTheEntryCannotBeWritten()
    {
        // A file where the folder should be.
        QDir(config.path() + QStringLiteral("/autostart")).removeRecursively();
        QFile blocker(config.path() + QStringLiteral("/autostart"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        QString error;
        QVERIFY(!Autostart(QStringLiteral("tolvane")).setEnabled(true, &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(blocker.remove());
    }
};

TOLVANE_TEST_MAIN(AutostartTest)
#include "AutostartTest.moc"
