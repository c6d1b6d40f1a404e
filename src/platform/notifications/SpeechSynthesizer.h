#pragma once

#include <QString>

// Renders a sentence to an audio file.
class SpeechSynthesizer {
public:
    virtual ~SpeechSynthesizer() = default;
    // Blocks until the file is written; true when it holds audio.
    virtual bool synthesize(const QString& text, const QString& voice, const QString& outputPath) = 0;
};
