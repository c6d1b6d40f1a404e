#pragma once

#include <QString>

// Plays a sound file once, without waiting for it to end.
class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;
    virtual void play(const QString& filePath) = 0;
};
