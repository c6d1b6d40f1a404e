#pragma once

#include "platform/notifications/SpeechSynthesizer.h"

// espeak-ng writing a WAV file. Its exit status says nothing about the file (an unwritable path
// still exits 0), so success is judged by the file: present and longer than a bare WAV header.
class EspeakSpeechSynthesizer final : public SpeechSynthesizer {
public:
    explicit EspeakSpeechSynthesizer(QString program = QStringLiteral("/usr/bin/espeak-ng"), int timeoutMs = 30000);

    bool synthesize(const QString& text, const QString& voice, const QString& outputPath) override;

private:
    QString m_program;
    int m_timeoutMs;
};
