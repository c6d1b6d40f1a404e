#include "screens/settings/UserSettingsView.h"

#include "screens/common/AppServices.h"
#include "screens/common/Appearance.h"
#include "screens/common/Icons.h"
#include "screens/rituals/RitualSettingsView.h"
#include "screens/settings/AccountSettingsView.h"
#include "screens/settings/AlarmSettingsView.h"
#include "screens/settings/CalendarProvidersView.h"
#include "screens/settings/CalendarVisibilitySettingsView.h"
#include "screens/settings/DataSettingsView.h"
#include "screens/settings/HelpSettingsView.h"
#include "screens/settings/SettingsButtonView.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

// A section's page: its title over its content, the content no wider than the form width.
QWidget* page(UserSettingsSectionEnum section, QWidget* content, QWidget* parent)
{
    auto* wrapper = new QWidget(parent);
    wrapper->setObjectName(QStringLiteral("section:") + QString::number(int(section)));
    auto* title = new QLabel(UserSettingsSection::title(section), wrapper);
    QFont font = title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.4);
    title->setFont(font);
    content->setParent(wrapper);
    content->setMaximumWidth(UserSettingsView::formWidth * 3 / 2);
    auto* layout = new QVBoxLayout(wrapper);
    layout->addWidget(title);
    layout->addWidget(content, 1);
    return wrapper;
}

int storedHour(const UserDefaults& defaults, const QString& key, int fallback)
{
    bool ok = false;
    const int hour = defaults.value(key).toInt(&ok);
    return ok && hour >= 0 && hour <= 24 ? hour : fallback;
}

} // namespace

UserSettingsView::UserSettingsView(
    const AppServices& services, CalendarSettingsServices calendarServices, ConsoleFactory makeConsole, QWidget* parent)
    : QDialog(parent)
    , m_services(services)
    , m_sections(new QListWidget(this))
    , m_pages(new QStackedWidget(this))
{
    setObjectName(QStringLiteral("userSettingsView"));
    //% "Settings"
    setWindowTitle(qtTrId("user-settings-screen-title"));
    resize(formWidth + 420, 620);
    m_sections->setObjectName(QStringLiteral("settingsSections"));
    m_sections->setFixedWidth(200);
    for (const UserSettingsSectionEnum section : UserSettingsSection::allCases) {
        new QListWidgetItem(
            Icons::symbol(UserSettingsSection::symbol(section)), UserSettingsSection::title(section), m_sections);
    }

    auto add = [this](UserSettingsSectionEnum section, QWidget* content) {
        m_pages->addWidget(page(section, content, m_pages));
    };
    add(UserSettingsSectionEnum::myAccount, new AccountSettingsView(services));
    add(UserSettingsSectionEnum::schedule, makeScheduleSection());
    add(UserSettingsSectionEnum::accounts, new CalendarProvidersView(services, calendarServices));
    add(UserSettingsSectionEnum::calendars, new CalendarVisibilitySettingsView(services));
    add(UserSettingsSectionEnum::alarm, new AlarmSettingsView(services));
    add(UserSettingsSectionEnum::help, new HelpSettingsView(services, makeConsole ? makeConsole(nullptr) : nullptr));
    add(UserSettingsSectionEnum::data, new DataSettingsView(services));

    //% "Close"
    auto* close = new SettingsButtonView(
        "user-settings-close-button", qtTrId("user-settings-close-button"), QString(), {}, this);
    auto* columns = new QHBoxLayout;
    columns->addWidget(m_sections);
    columns->addWidget(m_pages, 1);
    auto* footer = new QHBoxLayout;
    footer->addStretch();
    footer->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addLayout(footer);

    connect(m_sections, &QListWidget::currentRowChanged, this,
        [this](int row) { selectSection(UserSettingsSection::allCases.at(std::max(row, 0))); });
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    m_sections->setCurrentRow(0);
}

void UserSettingsView::selectSection(UserSettingsSectionEnum section)
{
    m_selectedSection = section;
    const QSignalBlocker blocker(m_sections);
    m_sections->setCurrentRow(int(section));
    m_pages->setCurrentIndex(int(section));
}

QWidget* UserSettingsView::sectionView(UserSettingsSectionEnum section) const
{
    QWidget* wrapper = m_pages->widget(int(section));
    // The wrapper holds the title and the section's own view, in that order.
    return wrapper ? qobject_cast<QWidget*>(wrapper->layout()->itemAt(1)->widget()) : nullptr;
}

QWidget* UserSettingsView::makeScheduleSection()
{
    auto* section = new QWidget;
    section->setObjectName(QStringLiteral("scheduleHours"));
    m_startHour = new QSpinBox(section);
    m_startHour->setObjectName(QStringLiteral("startHour"));
    m_startHour->setRange(0, 23);
    m_startHour->setSuffix(QStringLiteral(":00"));
    m_endHour = new QSpinBox(section);
    m_endHour->setObjectName(QStringLiteral("endHour"));
    m_endHour->setRange(1, 24);
    m_endHour->setSuffix(QStringLiteral(":00"));
    const UserDefaults defaults = m_services.userDefaults();
    const int start = storedHour(defaults, startHourKey, defaultStartHour);
    const int end = storedHour(defaults, endHourKey, defaultEndHour);
    m_startHour->setValue(start);
    m_endHour->setValue(end > start ? end : std::min(start + 1, 24));
    //% "The schedule shows the hours from the first to the last; meets outside them still appear at the edges."
    auto* hint = new QLabel(qtTrId("user-settings-hours-hint"), section);
    hint->setWordWrap(true);
    hint->setEnabled(false);
    auto* form = new QFormLayout(section);
    //% "Day starts at"
    form->addRow(qtTrId("user-settings-hours-start-label"), m_startHour);
    //% "Day ends at"
    form->addRow(qtTrId("user-settings-hours-end-label"), m_endHour);
    form->addRow(hint);

    // Light or dark without touching the desktop or the environment.
    auto* appearance = new QComboBox(section);
    appearance->setObjectName(QStringLiteral("appearanceMode"));
    //% "As the desktop"
    appearance->addItem(qtTrId("user-settings-appearance-system"), int(Appearance::Mode::system));
    //% "Light"
    appearance->addItem(qtTrId("user-settings-appearance-light"), int(Appearance::Mode::light));
    //% "Dark"
    appearance->addItem(qtTrId("user-settings-appearance-dark"), int(Appearance::Mode::dark));
    appearance->setCurrentIndex(appearance->findData(int(Appearance::storedMode(defaults))));
    //% "Appearance"
    form->addRow(qtTrId("user-settings-appearance-label"), appearance);
    connect(appearance, &QComboBox::activated, this, [this, appearance] {
        Appearance::storeMode(m_services.userDefaults(), Appearance::Mode(appearance->currentData().toInt()),
            m_services.notificationCenter());
    });
    form->addRow(new RitualSettingsView(m_services, section));
    connect(m_startHour, &QSpinBox::valueChanged, this, [this] { saveHours(true); });
    connect(m_endHour, &QSpinBox::valueChanged, this, [this] { saveHours(false); });
    return section;
}

void UserSettingsView::saveHours(bool startChanged)
{
    // The range never closes: moving one edge past the other pushes the other along.
    if (m_startHour->value() >= m_endHour->value()) {
        const QSignalBlocker startBlocker(m_startHour);
        const QSignalBlocker endBlocker(m_endHour);
        if (startChanged)
            m_endHour->setValue(m_startHour->value() + 1);
        else
            m_startHour->setValue(m_endHour->value() - 1);
    }
    UserDefaults defaults = m_services.userDefaults();
    defaults.setValue(startHourKey, m_startHour->value());
    defaults.setValue(endHourKey, m_endHour->value());
}

int UserSettingsView::startHour() const
{
    return m_startHour->value();
}

int UserSettingsView::endHour() const
{
    return m_endHour->value();
}
