#include "screens/settings/CalendarVisibilitySettingsView.h"

#include "calendar_providers/stores/AlarmEnabledCalendarsStore.h"
#include "calendar_providers/stores/HiddenCalendarsStore.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLoggingCategory>
#include <QScrollArea>
#include <QVBoxLayout>

Q_LOGGING_CATEGORY(calendarVisibilityLog, "com.quorvel.tolvane.CalendarVisibilitySettings")

namespace {

struct Loaded {
    QList<EventKitAccountCalendarsEntity> accounts;
    QSet<QString> hidden;
    QSet<QString> alarmEnabled;
};

QLabel* swatch(const QString& colorHex, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setFixedSize(12, 12);
    label->setStyleSheet(QStringLiteral("border-radius: 6px; background: %1;")
                             .arg(colorHex.isEmpty() ? QStringLiteral("#8E8E93") : colorHex));
    return label;
}

} // namespace

CalendarVisibilitySettingsView::CalendarVisibilitySettingsView(const AppServices& services, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_rows(new QWidget(this))
    , m_grid(new QGridLayout(m_rows))
    //% "No calendars yet. Calendars of the accounts you set up on this computer show up here."
    , m_empty(new QLabel(qtTrId("user-settings-calendars-empty-state"), this))
    , m_default(new QComboBox(this))
{
    setObjectName(QStringLiteral("calendarVisibility"));
    m_empty->setObjectName(QStringLiteral("calendarsEmpty"));
    m_empty->setWordWrap(true);
    m_empty->setEnabled(false);
    m_empty->hide();
    m_default->setObjectName(QStringLiteral("defaultCalendar"));
    m_grid->setColumnStretch(1, 1);
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(m_rows);
    auto* form = new QFormLayout;
    //% "Calendar for new meets"
    form->addRow(qtTrId("user-settings-calendars-default-calendar-title"), m_default);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(scroll, 1);
    layout->addWidget(m_empty);
    layout->addLayout(form);

    connect(m_default, &QComboBox::activated, this, [this](int index) {
        const QString identifier = m_default->itemData(index).toString();
        setDefaultIdentifier(identifier.isEmpty() ? std::nullopt : std::optional(identifier));
    });
    m_services.notificationCenter().addObserver(
        NotificationName::calendarAccountsDidChange, this, [this](const QVariant&) { reload(); });
}

void CalendarVisibilitySettingsView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    reload();
}

void CalendarVisibilitySettingsView::reload()
{
    m_isLoading = true;
    CalendarStore::shared();
    NotificationCenter* center = &m_services.notificationCenter();
    const UserDefaults defaults = m_services.userDefaults();
    const QVariant storedDefault = defaults.value(defaultCalendarKey);
    m_defaultIdentifier = storedDefault.toString().isEmpty() ? std::nullopt : std::optional(storedDefault.toString());
    runAsync(
        this,
        [center, defaults] {
            Loaded loaded;
            loaded.hidden = HiddenCalendarsStore::standard(*center).load();
            loaded.alarmEnabled = AlarmEnabledCalendarsStore(defaults).load();
            try {
                loaded.accounts = EventKitMeetRepositoryImpl::live({})->accountCalendars();
            } catch (const std::exception& error) {
                // No access: the accounts section says so and how to fix it.
                qCWarning(calendarVisibilityLog) << "cannot list the calendars:" << error.what();
            }
            return loaded;
        },
        [this](const Loaded& loaded) {
            m_accounts = loaded.accounts;
            m_hiddenIdentifiers = loaded.hidden;
            m_alarmEnabledIdentifiers = loaded.alarmEnabled;
            m_isLoading = false;
            render();
            Q_EMIT reloaded();
        });
}

void CalendarVisibilitySettingsView::render()
{
    while (QLayoutItem* item = m_grid->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    int row = 0;
    //% "Show"
    auto* activate = new QLabel(qtTrId("user-settings-calendars-activate-column"), m_rows);
    //% "Alarms"
    auto* alarm = new QLabel(qtTrId("user-settings-calendars-alarm-column"), m_rows);
    for (QLabel* header : {activate, alarm}) {
        header->setFixedWidth(toggleColumnWidth);
        header->setAlignment(Qt::AlignCenter);
        header->setEnabled(false);
    }
    m_grid->addWidget(activate, row, 2);
    m_grid->addWidget(alarm, row, 3);
    ++row;

    const QSignalBlocker blocker(m_default);
    m_default->clear();
    //% "The calendar store's default"
    m_default->addItem(qtTrId("user-settings-calendars-default-calendar-automatic"), QString());
    bool hasCalendars = false;
    for (const EventKitAccountCalendarsEntity& account : std::as_const(m_accounts)) {
        auto* title = new QLabel(account.eacAccountTitle, m_rows);
        title->setTextFormat(Qt::PlainText);
        QFont bold = title->font();
        bold.setBold(true);
        title->setFont(bold);
        m_grid->addWidget(title, row++, 0, 1, 4);
        for (const EventKitCalendarInfoEntity& calendar : account.eacCalendars) {
            hasCalendars = true;
            m_grid->addWidget(swatch(calendar.eciColorHex, m_rows), row, 0);
            auto* name = new QLabel(calendar.eciTitle, m_rows);
            name->setTextFormat(Qt::PlainText);
            m_grid->addWidget(name, row, 1);
            auto* shown = new QCheckBox(m_rows);
            shown->setObjectName(QStringLiteral("activate:") + calendar.eciId);
            shown->setChecked(!m_hiddenIdentifiers.contains(calendar.eciId));
            auto* rings = new QCheckBox(m_rows);
            rings->setObjectName(QStringLiteral("alarm:") + calendar.eciId);
            rings->setChecked(m_alarmEnabledIdentifiers.contains(calendar.eciId));
            m_grid->addWidget(shown, row, 2, Qt::AlignCenter);
            m_grid->addWidget(rings, row, 3, Qt::AlignCenter);
            connect(shown, &QCheckBox::toggled, this,
                [this, id = calendar.eciId](bool checked) { setCalendarShown(id, checked); });
            connect(rings, &QCheckBox::toggled, this,
                [this, id = calendar.eciId](bool checked) { setAlarmEnabled(id, checked); });
            m_default->addItem(
                calendar.eciTitle + QStringLiteral(" (") + account.eacAccountTitle + QLatin1Char(')'), calendar.eciId);
            if (m_defaultIdentifier == calendar.eciId)
                m_default->setCurrentIndex(m_default->count() - 1);
        }
        ++row;
    }
    m_grid->setRowStretch(row, 1);
    m_rows->setVisible(hasCalendars);
    m_empty->setVisible(!hasCalendars);
    m_default->setEnabled(hasCalendars);
}

void CalendarVisibilitySettingsView::setCalendarShown(const QString& calendarIdentifier, bool shown)
{
    if (shown)
        m_hiddenIdentifiers.remove(calendarIdentifier);
    else
        m_hiddenIdentifiers.insert(calendarIdentifier);
    // The store tells the open schedules, which reload their meets.
    HiddenCalendarsStore::standard(m_services.notificationCenter()).save(m_hiddenIdentifiers);
}

void CalendarVisibilitySettingsView::setAlarmEnabled(const QString& calendarIdentifier, bool enabled)
{
    if (enabled)
        m_alarmEnabledIdentifiers.insert(calendarIdentifier);
    else
        m_alarmEnabledIdentifiers.remove(calendarIdentifier);
    AlarmEnabledCalendarsStore(m_services.userDefaults()).save(m_alarmEnabledIdentifiers);
    // Which meets may ring changed: the cards and day switches read it again.
    m_services.notificationCenter().post(NotificationName::alarmScheduleDidChange);
}

void CalendarVisibilitySettingsView::setDefaultIdentifier(const std::optional<QString>& identifier)
{
    m_defaultIdentifier = identifier;
    UserDefaults defaults = m_services.userDefaults();
    if (identifier)
        defaults.setValue(defaultCalendarKey, *identifier);
    else
        defaults.remove(defaultCalendarKey);
}
