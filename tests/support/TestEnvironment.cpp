#include "support/TestEnvironment.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStyleFactory>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>

namespace TestEnvironment {

void pinBeforeApplication()
{
    const QByteArray chosen = qgetenv(timeZoneOverride);
    qputenv("TZ", chosen.isEmpty() ? QByteArray(timeZone) : chosen);
    tzset();
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("LANG", "C.UTF-8");
    qputenv("LANGUAGE", "en");
}

void pinAfterApplication()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QCoreApplication::setApplicationName(QStringLiteral("TolvaneTests"));
}

QStringList reportApartFromStandardOutput(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (arguments.contains(QStringLiteral("-o")) || arguments.contains(QStringLiteral("-h"))
        || arguments.contains(QStringLiteral("-help")))
        return arguments;
    const QString program = arguments.isEmpty() ? QStringLiteral("test") : QFileInfo(arguments.constFirst()).fileName();
    const QByteArray path = QFile::encodeName(
        QDir::temp().filePath(QStringLiteral("%1-%2-stdout.log").arg(program).arg(QCoreApplication::applicationPid())));
    const int log = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (log < 0)
        return arguments;
    std::fflush(stdout);
    const int report = ::dup(STDOUT_FILENO);
    ::dup2(log, STDOUT_FILENO);
    ::close(log);
    // An empty log is not worth keeping.
    static QByteArray kept;
    kept = path;
    std::atexit([] {
        std::fflush(stdout);
        if (QFileInfo(QFile::decodeName(kept)).size() == 0)
            ::unlink(kept.constData());
    });
    std::fprintf(stderr, "The program's standard output (the network log) goes to %s\n", path.constData());
    arguments.append({QStringLiteral("-o"), QStringLiteral("/proc/self/fd/%1,txt").arg(report)});
    return arguments;
}

void pinWidgetStyle()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
}

} // namespace TestEnvironment
