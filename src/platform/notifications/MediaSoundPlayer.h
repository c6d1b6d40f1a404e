#pragma once

#include "platform/notifications/SoundPlayer.h"

#include <QObject>

class QAudioOutput;
class QMediaPlayer;

// Qt Multimedia on the default audio output; .oga needs GStreamer's Vorbis plugins or FFmpeg.
// Lives on the thread that created it.
class MediaSoundPlayer final : public QObject, public SoundPlayer {
    Q_OBJECT

public:
    explicit MediaSoundPlayer(QObject* parent = nullptr);
    ~MediaSoundPlayer() override;

    void play(const QString& filePath) override;

private:
    QMediaPlayer* m_player = nullptr;
    QAudioOutput* m_output = nullptr;
};
