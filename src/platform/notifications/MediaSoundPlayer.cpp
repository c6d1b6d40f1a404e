#include "platform/notifications/MediaSoundPlayer.h"

#include "platform/Logging.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QUrl>

MediaSoundPlayer::MediaSoundPlayer(QObject* parent)
    : QObject(parent)
{
}

MediaSoundPlayer::~MediaSoundPlayer() = default;

void MediaSoundPlayer::play(const QString& filePath)
{
    // Created on first use: most runs never ring, and opening the audio backend is not free.
    if (!m_player) {
        m_player = new QMediaPlayer(this);
        m_output = new QAudioOutput(this);
        m_player->setAudioOutput(m_output);
        connect(m_player, &QMediaPlayer::errorOccurred, this,
            [](QMediaPlayer::Error, const QString& message) { qCWarning(lcAlarms) << "alarm sound:" << message; });
    }
    m_player->stop();
    m_player->setSource(QUrl::fromLocalFile(filePath));
    m_player->play();
}
