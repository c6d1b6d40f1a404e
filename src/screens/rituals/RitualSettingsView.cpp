#include "screens/rituals/RitualSettingsView.h"

#include "rituals/Autostart.h"
#include "rituals/RitualSettings.h"
#include "screens/common/AppServices.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>

namespace {

QLabel* hint(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    label->setEnabled(false);
    return label;
}

} // namespace

RitualSettingsView::RitualSettingsView(const AppServices& services, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
{
    setObjectName(QStringLiteral("ritualSettings"));
    const UserDefaults defaults = services.userDefaults();
    auto* form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);

    //% "Open the morning plan at the first start of a day"
    auto* plan = new QCheckBox(qtTrId("rituals-settings-plan-at-start"), this);
    plan->setObjectName(QStringLiteral("planAtFirstStart"));
    plan->setChecked(!defaults.contains(RitualSettings::morningPlanAtFirstStartKey)
        || defaults.boolValue(RitualSettings::morningPlanAtFirstStartKey));
    connect(plan, &QCheckBox::toggled, this, [this](bool on) {
        UserDefaults(m_services.userDefaults()).setValue(RitualSettings::morningPlanAtFirstStartKey, on);
    });
    form->addRow(plan);

    //% "Move unfinished daily tasks of earlier days to today by themselves"
    auto* autoMove = new QCheckBox(qtTrId("rituals-settings-auto-move"), this);
    autoMove->setObjectName(QStringLiteral("autoMoveUnfinished"));
    autoMove->setChecked(defaults.boolValue(RitualSettings::autoMoveUnfinishedKey));
    connect(autoMove, &QCheckBox::toggled, this, [this](bool on) {
        UserDefaults(m_services.userDefaults()).setValue(RitualSettings::autoMoveUnfinishedKey, on);
    });
    form->addRow(autoMove);

    //% "Remind me to plan the day at"
    form->addRow(qtTrId("rituals-settings-plan-hour"), hourChoice(RitualSettings::morningPlanHourKey));
    //% "Remind me to review the day at"
    form->addRow(qtTrId("rituals-settings-review-hour"), hourChoice(RitualSettings::reviewHourKey));

    //% "Start Tolvane when I log in, in the tray"
    m_startAtLogin = new QCheckBox(qtTrId("rituals-settings-start-at-login"), this);
    m_startAtLogin->setObjectName(QStringLiteral("startAtLogin"));
    m_startAtLogin->setChecked(Autostart(QString()).isEnabled());
    connect(m_startAtLogin, &QCheckBox::toggled, this, [this](bool on) {
        UserDefaults(m_services.userDefaults()).setValue(RitualSettings::startAtLoginKey, on);
        QString error;
        if (!Autostart(QCoreApplication::applicationFilePath()).setEnabled(on, &error)) {
            m_services.console().appendLine(QStringLiteral("RitualSettingsView.startAtLogin failed: ") + error);
            //% "The login start could not be changed: %1"
            QMessageBox::warning(this, windowTitle(), qtTrId("rituals-settings-start-at-login-failed").arg(error));
            const QSignalBlocker blocker(m_startAtLogin);
            m_startAtLogin->setChecked(Autostart(QString()).isEnabled());
        }
    });
    form->addRow(m_startAtLogin);
    // clang-format off
    //% "Alarms and reminders ring only while Tolvane runs. With this on, Tolvane starts hidden in the tray when you log in, and opens when you click it. It is turned on by itself when you arm your first alarm; turn it off here if you would rather start Tolvane yourself."
    form->addRow(hint(qtTrId("rituals-settings-start-at-login-hint"), this));
    // clang-format on
}

QComboBox* RitualSettingsView::hourChoice(const QString& key)
{
    auto* choice = new QComboBox(this);
    choice->setObjectName(key);
    //% "Never"
    choice->addItem(qtTrId("rituals-settings-no-reminder"), -1);
    for (int hour = 0; hour < 24; ++hour)
        choice->addItem(QLocale().toString(QTime(hour, 0), QLocale::ShortFormat), hour);
    bool isHour = false;
    const int stored = m_services.userDefaults().value(key).toInt(&isHour);
    choice->setCurrentIndex(isHour ? std::max(0, choice->findData(stored)) : 0);
    connect(choice, &QComboBox::activated, this, [this, choice, key] {
        UserDefaults defaults = m_services.userDefaults();
        if (choice->currentData().toInt() < 0)
            defaults.remove(key);
        else
            defaults.setValue(key, choice->currentData().toInt());
        m_services.notificationCenter().post(RitualSettings::remindersDidChange);
    });
    return choice;
}
