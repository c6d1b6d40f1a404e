#include "platform/notifications/EspeakSpeechSynthesizer.h"

#include "platform/Logging.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {
constexpr qint64 wavHeaderSize = 44;
}

EspeakSpeechSynthesizer::EspeakSpeechSynthesizer(QString program, int timeoutMs)
    : m_program(std::move(program))
    , m_timeoutMs(timeoutMs)
{
}

bool EspeakSpeechSynthesizer::synthesize(const QString& text, const QString& voice, const QString& outputPath)
{
    // A stale file from an earlier run must not pass for this one.
    QFile::remove(outputPath);
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardOutputFile(QProcess::nullDevice());
    // "--" keeps a sentence that starts with "-" from being read as an option.
    process.start(
        m_program, {QStringLiteral("-v"), voice, QStringLiteral("-w"), outputPath, QStringLiteral("--"), text});
    if (!process.waitForStarted(m_timeoutMs)) {
        qCWarning(lcAlarms) << "speech: cannot start" << m_program << process.errorString();
        return false;
    }
    if (!process.waitForFinished(m_timeoutMs)) {
        qCWarning(lcAlarms) << "speech: no answer in time";
        process.kill();
        process.waitForFinished(1000);
        QFile::remove(outputPath);
        return false;
    }
    const QFileInfo written(outputPath);
    if (!written.exists() || written.size() <= wavHeaderSize) {
        qCWarning(lcAlarms) << "speech: no audio written to" << outputPath;
        return false;
    }
    return true;
}
