#pragma once

#include "meetings/entities/MeetEntity.h"

#include <QDialog>

class QPushButton;

// A meet's details, with edit, join (its link), delete and its alarm switch.
class MeetDetailView final : public QDialog {
    Q_OBJECT

public:
    MeetDetailView(const MeetEntity& meet, bool isAlarmSet, QWidget* parent = nullptr);

    const MeetEntity& meet() const { return m_meet; }
    bool isAlarmSet() const { return m_isAlarmSet; }
    bool isTogglingAlarm() const { return m_isTogglingAlarm; }
    // The answer to the last alarm toggle: the state now stored.
    void finishTogglingAlarm(bool isAlarmSet);

Q_SIGNALS:
    void onEdit();
    void onDelete();
    void alarmToggled(const MeetEntity& meet, bool armed);

private:
    void render();

    MeetEntity m_meet;
    bool m_isAlarmSet;
    bool m_isTogglingAlarm = false;
    QPushButton* m_alarm;
};
