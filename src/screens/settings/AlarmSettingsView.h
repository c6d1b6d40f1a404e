#pragma once

#include "meetings/alarms/MeetAlarmModeEnum.h"
#include "meetings/alarms/MeetAlarmVoiceLanguageEnum.h"
#include "platform/notifications/UserNotificationCenter.h"

#include <QWidget>

#include <optional>

class AppServices;
class QComboBox;
class QLabel;
class QLineEdit;
class SettingsButtonView;

// How alarms ring: a chime or a spoken sentence, its language and its message template, a
// sample to hear the choice, and the way to silence every alarm at once. Warns when the
// desktop cannot show the notifications at all.
class AlarmSettingsView final : public QWidget {
    Q_OBJECT

public:
    explicit AlarmSettingsView(const AppServices& services, QWidget* parent = nullptr);

    MeetAlarmModeEnum alarmMode() const { return m_alarmMode; }
    MeetAlarmVoiceLanguageEnum alarmVoiceLanguage() const { return m_alarmVoiceLanguage; }
    QString alarmMessageTemplate() const;
    const std::optional<QString>& alarmMessageError() const { return m_alarmMessageError; }
    UserNotificationAuthorizationStatus alertStyle() const { return m_alertStyle; }
    bool isPreviewingSample() const { return m_isPreviewingSample; }
    bool isDeletingAllAlarms() const { return m_isDeletingAllAlarms; }

    // Stores the template when it is valid; otherwise keeps it in the field under its error.
    void saveTemplate();
    void previewSample();
    // Asks first.
    void deleteAllAlarms();

Q_SIGNALS:
    void alertStyleChecked();
    void sampleScheduled(bool scheduled);
    void allAlarmsDeleted();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void checkAlertStyle();
    void render();

    const AppServices& m_services;
    MeetAlarmModeEnum m_alarmMode;
    MeetAlarmVoiceLanguageEnum m_alarmVoiceLanguage;
    std::optional<QString> m_alarmMessageError;
    UserNotificationAuthorizationStatus m_alertStyle = UserNotificationAuthorizationStatus::authorized;
    bool m_isPreviewingSample = false;
    bool m_isDeletingAllAlarms = false;
    QComboBox* m_mode;
    QComboBox* m_language;
    QLineEdit* m_template;
    QLabel* m_templateError;
    QWidget* m_warning;
    SettingsButtonView* m_preview;
    SettingsButtonView* m_deleteAll;
};
