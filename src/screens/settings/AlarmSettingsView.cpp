#include "screens/settings/AlarmSettingsView.h"

#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "meetings/templates/AlarmMessageDomainError.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"
#include "screens/settings/CalendarSettingsServices.h"
#include "screens/settings/SettingsButtonView.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

AlarmSettingsView::AlarmSettingsView(const AppServices& services, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_alarmMode(MeetAlarmModeStore(services.userDefaults()).load())
    , m_alarmVoiceLanguage(MeetAlarmVoiceLanguageStore(services.userDefaults()).load())
    , m_mode(new QComboBox(this))
    , m_language(new QComboBox(this))
    , m_template(new QLineEdit(this))
    , m_templateError(new QLabel(this))
    , m_warning(new QWidget(this))
{
    setObjectName(QStringLiteral("alarmSettings"));
    m_mode->setObjectName(QStringLiteral("alarmMode"));
    //% "Spoken sentence"
    m_mode->addItem(qtTrId("meet-alarm-mode-voice"), MeetAlarmModes::rawValue(MeetAlarmModeEnum::voice));
    //% "Alarm clock"
    m_mode->addItem(qtTrId("meet-alarm-mode-hero"), MeetAlarmModes::rawValue(MeetAlarmModeEnum::hero));
    //% "Bell"
    m_mode->addItem(qtTrId("meet-alarm-mode-funk"), MeetAlarmModes::rawValue(MeetAlarmModeEnum::funk));
    m_mode->setCurrentIndex(m_mode->findData(MeetAlarmModes::rawValue(m_alarmMode)));
    m_language->setObjectName(QStringLiteral("alarmVoiceLanguage"));
    //% "Spanish"
    m_language->addItem(qtTrId("meet-alarm-voice-language-spanish"),
        MeetAlarmVoiceLanguages::rawValue(MeetAlarmVoiceLanguageEnum::spanish));
    //% "English"
    m_language->addItem(qtTrId("meet-alarm-voice-language-english"),
        MeetAlarmVoiceLanguages::rawValue(MeetAlarmVoiceLanguageEnum::english));
    m_language->setCurrentIndex(m_language->findData(MeetAlarmVoiceLanguages::rawValue(m_alarmVoiceLanguage)));
    m_template->setObjectName(QStringLiteral("alarmMessageTemplate"));
    m_template->setText(services.alarmMessageApplication().loadTemplateText());
    m_templateError->setObjectName(QStringLiteral("alarmMessageError"));
    m_templateError->setStyleSheet(QStringLiteral("color: #E5484D;"));
    m_templateError->setWordWrap(true);
    //% "Write {event} where the meet's name goes, or leave it empty for the usual sentence."
    auto* hint = new QLabel(qtTrId("meet-alarm-message-hint"), this);
    hint->setWordWrap(true);
    hint->setEnabled(false);

    m_warning->setObjectName(QStringLiteral("alarmBannerWarning"));
    auto* warningLayout = new QHBoxLayout(m_warning);
    warningLayout->setContentsMargins(0, 0, 0, 0);
    //% "The desktop cannot show Tolvane's notifications right now, so alarms will not appear. Check the notification
    // settings."
    auto* warningText = new QLabel(qtTrId("meet-alarm-banner-style-warning"), m_warning);
    warningText->setWordWrap(true);
    warningText->setStyleSheet(QStringLiteral("color: #C27C0E;"));
    //% "Notification settings"
    auto* openSettings = new SettingsButtonView("meet-alarm-open-notification-settings-button",
        qtTrId("meet-alarm-open-notification-settings-button"), QStringLiteral("gearshape"), {}, m_warning);
    openSettings->setVisible(!DesktopSettings::command(DesktopSettings::Page::notifications).isEmpty());
    warningLayout->addWidget(warningText, 1);
    warningLayout->addWidget(openSettings);

    //% "Play a sample"
    m_preview = new SettingsButtonView("meet-alarm-sample-preview-button", qtTrId("meet-alarm-sample-preview-button"),
        QStringLiteral("alarm"), {}, this);
    //% "Delete all alarms"
    m_deleteAll = new SettingsButtonView("meet-alarm-delete-all-button", qtTrId("meet-alarm-delete-all-button"),
        QStringLiteral("trash"), {.isDestructive = true}, this);

    auto* form = new QFormLayout;
    //% "Alarm sound"
    form->addRow(qtTrId("meet-alarm-mode-title"), m_mode);
    //% "Voice language"
    form->addRow(qtTrId("meet-alarm-voice-language-title"), m_language);
    //% "Spoken message"
    form->addRow(qtTrId("meet-alarm-message-title"), m_template);
    form->addRow(QString(), m_templateError);
    form->addRow(QString(), hint);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_preview);
    buttons->addStretch();
    buttons->addWidget(m_deleteAll);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_warning);
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addStretch();

    connect(m_mode, &QComboBox::activated, this, [this](int index) {
        m_alarmMode = MeetAlarmModes::fromRawValue(m_mode->itemData(index).toString());
        MeetAlarmModeStore(m_services.userDefaults()).save(m_alarmMode);
        render();
    });
    connect(m_language, &QComboBox::activated, this, [this](int index) {
        m_alarmVoiceLanguage = MeetAlarmVoiceLanguages::fromRawValue(m_language->itemData(index).toString());
        MeetAlarmVoiceLanguageStore(m_services.userDefaults()).save(m_alarmVoiceLanguage);
    });
    connect(m_template, &QLineEdit::editingFinished, this, &AlarmSettingsView::saveTemplate);
    connect(
        openSettings, &QPushButton::clicked, this, [] { DesktopSettings::open(DesktopSettings::Page::notifications); });
    connect(m_preview, &QPushButton::clicked, this, &AlarmSettingsView::previewSample);
    connect(m_deleteAll, &QPushButton::clicked, this, &AlarmSettingsView::deleteAllAlarms);
    m_warning->hide();
    render();
}

QString AlarmSettingsView::alarmMessageTemplate() const
{
    return m_template->text();
}

void AlarmSettingsView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    checkAlertStyle();
}

void AlarmSettingsView::checkAlertStyle()
{
    const std::shared_ptr<UserNotificationCenter> center = m_services.userNotificationCenter();
    runAsync(
        this, [center] { return center->authorizationStatus(); },
        [this](UserNotificationAuthorizationStatus status) {
            m_alertStyle = status;
            render();
            Q_EMIT alertStyleChecked();
        });
}

void AlarmSettingsView::render()
{
    // The language only matters to the spoken sentence.
    m_language->setEnabled(m_alarmMode == MeetAlarmModeEnum::voice);
    m_template->setEnabled(m_alarmMode == MeetAlarmModeEnum::voice);
    m_templateError->setText(m_alarmMessageError.value_or(QString()));
    m_templateError->setVisible(m_alarmMessageError.has_value());
    // Without a notification server nothing shows and nothing rings; every server we know of
    // shows banners and either plays the sound or lets us play it.
    m_warning->setVisible(m_alertStyle == UserNotificationAuthorizationStatus::denied);
    m_preview->setLoading(m_isPreviewingSample);
    m_deleteAll->setLoading(m_isDeletingAllAlarms);
}

void AlarmSettingsView::saveTemplate()
{
    try {
        m_services.alarmMessageApplication().saveTemplateText(m_template->text());
        m_alarmMessageError.reset();
    } catch (const AlarmMessageDomainError&) {
        m_alarmMessageError = qtTrId("meet-alarm-message-error");
    }
    render();
}

void AlarmSettingsView::previewSample()
{
    saveTemplate();
    m_isPreviewingSample = true;
    render();
    const MeetAlarmScheduler scheduler = m_services.meetAlarmScheduler();
    runAsync(
        this, [scheduler] { return scheduler.playSamplePreview(); },
        [this](bool scheduled) {
            m_isPreviewingSample = false;
            render();
            Q_EMIT sampleScheduled(scheduled);
        });
}

void AlarmSettingsView::deleteAllAlarms()
{
    //% "Delete every alarm?"
    QMessageBox box(QMessageBox::Question, qtTrId("meet-alarm-delete-all-confirmation-title"),
        qtTrId("meet-alarm-delete-all-confirmation-title"), QMessageBox::NoButton, this);
    box.setObjectName(QStringLiteral("confirmation"));
    //% "Delete all"
    QPushButton* confirm = box.addButton(qtTrId("meet-alarm-delete-all-confirm-button"), QMessageBox::DestructiveRole);
    //% "Cancel"
    QPushButton* cancel = box.addButton(qtTrId("meet-alarm-delete-all-cancel-button"), QMessageBox::RejectRole);
    box.setDefaultButton(cancel);
    box.exec();
    if (box.clickedButton() != confirm)
        return;
    m_isDeletingAllAlarms = true;
    render();
    const MeetAlarmScheduler scheduler = m_services.meetAlarmScheduler();
    runAsync(
        this,
        [scheduler] {
            // Task reminders belong to their tasks: the task says when it reminds.
            scheduler.deleteAllAlarms(TaskReminderScheduler::identifierPrefix);
            return true;
        },
        [this](bool) {
            m_isDeletingAllAlarms = false;
            render();
            m_services.notificationCenter().post(NotificationName::alarmScheduleDidChange);
            Q_EMIT allAlarmsDeleted();
        });
}
