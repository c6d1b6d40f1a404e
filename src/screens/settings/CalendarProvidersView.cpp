#include "screens/settings/CalendarProvidersView.h"

#include "calendar_providers/stores/EnabledCalendarProvidersStore.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"
#include "screens/settings/SettingsButtonView.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QUuid>
#include <QVBoxLayout>

namespace {

struct Loaded {
    bool isAccessDenied = false;
    CalendarProvidersResultEntity list;
};

QString kindName(AccountProviderEnum kind)
{
    switch (kind) {
    case AccountProviderEnum::eventKit:
        //% "Calendars of this computer"
        return qtTrId("accounts-provider-eventkit-name");
    }
    return {};
}

// The kind of account to add; none when the user cancels.
std::optional<AccountProviderEnum> pickKind(QWidget* parent)
{
    QDialog dialog(parent);
    dialog.setObjectName(QStringLiteral("providerPicker"));
    //% "Add a calendar account"
    dialog.setWindowTitle(qtTrId("accounts-provider-picker-title"));
    auto* layout = new QVBoxLayout(&dialog);
    auto* kinds = new QListWidget(&dialog);
    kinds->setObjectName(QStringLiteral("providerKinds"));
    for (const AccountProviderEnum kind : AccountProvider::allCases) {
        auto* item = new QListWidgetItem(kindName(kind), kinds);
        item->setData(Qt::UserRole, AccountProvider::rawValue(kind));
    }
    kinds->setCurrentRow(0);
    layout->addWidget(kinds);
    auto* buttons = new QDialogButtonBox(&dialog);
    //% "Continue"
    buttons->addButton(qtTrId("accounts-provider-picker-continue-button"), QDialogButtonBox::AcceptRole);
    //% "Cancel"
    buttons->addButton(qtTrId("accounts-provider-picker-cancel-button"), QDialogButtonBox::RejectRole);
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted || !kinds->currentItem())
        return std::nullopt;
    return AccountProvider::fromRawValue(kinds->currentItem()->data(Qt::UserRole).toString());
}

} // namespace

CalendarProvidersView::CalendarProvidersView(
    const AppServices& services, CalendarSettingsServices calendarServices, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_calendarServices(std::move(calendarServices))
    , m_pages(new QStackedWidget(this))
{
    setObjectName(QStringLiteral("calendarProviders"));

    m_deniedPage = new QWidget(this);
    m_deniedPage->setObjectName(QStringLiteral("accountsPermissionDenied"));
    auto* denied = new QVBoxLayout(m_deniedPage);
    //% "Tolvane cannot read your calendars"
    auto* deniedTitle = new QLabel(qtTrId("accounts-permission-denied-title"), m_deniedPage);
    QFont bold = deniedTitle->font();
    bold.setBold(true);
    deniedTitle->setFont(bold);
    //% "The desktop's calendar service did not answer. Check that your calendar accounts are set up and that the
    // service is running."
    auto* deniedMessage = new QLabel(qtTrId("accounts-permission-denied-message"), m_deniedPage);
    deniedMessage->setWordWrap(true);
    //% "Open settings"
    auto* openSettings = new SettingsButtonView("accounts-permission-denied-open-settings-button",
        qtTrId("accounts-permission-denied-open-settings-button"), QStringLiteral("gearshape"), {}, m_deniedPage);
    openSettings->setVisible(!DesktopSettings::command(DesktopSettings::Page::calendarAccounts).isEmpty());
    connect(openSettings, &QPushButton::clicked, this,
        [] { DesktopSettings::open(DesktopSettings::Page::calendarAccounts); });
    denied->addWidget(deniedTitle);
    denied->addWidget(deniedMessage);
    denied->addWidget(openSettings, 0, Qt::AlignLeft);
    denied->addStretch();

    m_listPage = new QWidget(this);
    auto* columns = new QHBoxLayout(m_listPage);
    auto* left = new QVBoxLayout;
    m_list = new QListWidget(m_listPage);
    m_list->setObjectName(QStringLiteral("accountsList"));
    // clang-format off
    //% "No calendar accounts added yet. The schedule shows the calendars of this computer; add an account here to turn its calendars on or off."
    // clang-format on
    m_empty = new QLabel(qtTrId("accounts-empty-state-text"), m_listPage);
    m_empty->setObjectName(QStringLiteral("accountsEmpty"));
    m_empty->setWordWrap(true);
    m_empty->setEnabled(false);
    //% "Add account"
    auto* add = new SettingsButtonView(
        "accounts-add-button", qtTrId("accounts-add-button"), QStringLiteral("plus"), {}, m_listPage);
    left->addWidget(m_list, 1);
    left->addWidget(m_empty);
    left->addWidget(add);
    columns->addLayout(left, 1);

    m_detail = new QStackedWidget(m_listPage);
    //% "Choose an account to see its details."
    m_selectPrompt = new QLabel(qtTrId("accounts-select-account-text"), m_detail);
    m_selectPrompt->setAlignment(Qt::AlignCenter);
    m_selectPrompt->setEnabled(false);
    m_details = new QWidget(m_detail);
    auto* form = new QFormLayout(m_details);
    m_name = new QLabel(m_details);
    m_name->setObjectName(QStringLiteral("accountName"));
    m_name->setTextFormat(Qt::PlainText);
    m_name->setFont(bold);
    m_email = new QLineEdit(m_details);
    m_email->setObjectName(QStringLiteral("accountEmail"));
    m_email->setReadOnly(true);
    //% "Use this account's calendars"
    m_enabled = new QCheckBox(qtTrId("accounts-enable-toggle"), m_details);
    m_enabled->setObjectName(QStringLiteral("accountEnabled"));
    //% "Remove account"
    auto* remove = new SettingsButtonView("accounts-delete-button", qtTrId("accounts-delete-button"),
        QStringLiteral("trash"), {.isDestructive = true}, m_details);
    form->addRow(m_name);
    //% "E-mail"
    form->addRow(qtTrId("accounts-email-field"), m_email);
    form->addRow(m_enabled);
    form->addRow(remove);
    m_detail->addWidget(m_selectPrompt);
    m_detail->addWidget(m_details);
    columns->addWidget(m_detail, 2);

    m_error = new QLabel(this);
    m_error->setObjectName(QStringLiteral("accountsError"));
    m_error->setStyleSheet(QStringLiteral("color: #E5484D;"));
    m_error->setWordWrap(true);
    m_error->hide();

    m_pages->addWidget(m_listPage);
    m_pages->addWidget(m_deniedPage);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pages, 1);
    layout->addWidget(m_error);

    connect(add, &QPushButton::clicked, this, &CalendarProvidersView::addAccount);
    connect(m_list, &QListWidget::currentRowChanged, this, &CalendarProvidersView::showSelected);
    connect(m_enabled, &QCheckBox::clicked, this, &CalendarProvidersView::setSelectedEnabled);
    connect(remove, &QPushButton::clicked, this, &CalendarProvidersView::removeSelected);
    render();
}

CalendarProviderEntity CalendarProvidersView::defaultDeviceAccount(int existingAccounts, const QDateTime& now)
{
    const QString number = existingAccounts > 0 ? QString::number(existingAccounts + 1) : QString();
    CalendarProviderEntity account;
    account.capId = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    account.capProvider = AccountProviderEnum::eventKit;
    account.capDisplayName
        = QStringLiteral("Cuenta iOS calendar") + (number.isEmpty() ? QString() : QLatin1Char(' ') + number);
    account.capDescription = QStringLiteral("iOS calendar");
    account.capEmail = QStringLiteral("eventKit") + number + QLatin1Char('@') + placeholderEmailDomain;
    account.capIsEnabled = true;
    account.capRegisteredAt = now;
    return account;
}

void CalendarProvidersView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!m_hasLoaded)
        reload();
}

void CalendarProvidersView::reload()
{
    m_hasLoaded = true;
    m_isLoading = true;
    // The calendar store must first be reached from the GUI thread.
    CalendarStore::shared();
    const CalendarSettingsServices services = m_calendarServices;
    runAsync(
        this,
        [services] {
            Loaded loaded;
            const CalendarProvidersResultEntity made = services.registryApplication();
            if (!made.result) {
                loaded.list = made;
                return loaded;
            }
            const auto& registry = *made.dataAs<CalendarProviderRegistryApplication>();
            loaded.isAccessDenied = !registry.requestAccess(AccountProviderEnum::eventKit).result;
            loaded.list = registry.listProviders();
            if (const auto* providers = loaded.list.dataAs<QList<CalendarProviderEntity>>()) {
                AccountProviderSet kinds;
                for (const CalendarProviderEntity& provider : *providers) {
                    if (provider.capIsEnabled)
                        kinds.insert(provider.capProvider);
                }
                EnabledCalendarProvidersStore::standard().save(kinds);
            }
            return loaded;
        },
        [this](const Loaded& loaded) {
            m_isLoading = false;
            m_isAccessDenied = loaded.isAccessDenied;
            const auto* providers = loaded.list.dataAs<QList<CalendarProviderEntity>>();
            m_providers = providers ? *providers : QList<CalendarProviderEntity>();
            m_error->setText(loaded.list.firstMessage().value_or(QString()));
            m_error->setVisible(!loaded.list.result && !m_isAccessDenied);
            render();
            Q_EMIT reloaded();
        });
}

void CalendarProvidersView::render()
{
    m_pages->setCurrentWidget(m_isAccessDenied ? m_deniedPage : m_listPage);
    const QString current = selected() ? selected()->capId : QString();
    const QSignalBlocker blocker(m_list);
    m_list->clear();
    for (const CalendarProviderEntity& provider : std::as_const(m_providers)) {
        auto* item = new QListWidgetItem(provider.capDisplayName, m_list);
        item->setData(Qt::UserRole, provider.capId);
        if (provider.capId == current)
            m_list->setCurrentItem(item);
    }
    m_list->setVisible(!m_providers.isEmpty());
    m_empty->setVisible(m_providers.isEmpty() && !m_isLoading);
    showSelected();
}

std::optional<CalendarProviderEntity> CalendarProvidersView::selected() const
{
    const QListWidgetItem* item = m_list->currentItem();
    if (!item)
        return std::nullopt;
    for (const CalendarProviderEntity& provider : m_providers) {
        if (provider.capId == item->data(Qt::UserRole).toString())
            return provider;
    }
    return std::nullopt;
}

void CalendarProvidersView::showSelected()
{
    const std::optional<CalendarProviderEntity> provider = selected();
    m_detail->setCurrentWidget(provider ? m_details : static_cast<QWidget*>(m_selectPrompt));
    if (!provider)
        return;
    m_name->setText(provider->capDisplayName);
    m_email->setText(provider->capEmail);
    m_enabled->setChecked(provider->capIsEnabled);
}

template <typename Work> void CalendarProvidersView::runOnRegistry(const QString& action, Work work, bool changes)
{
    m_error->hide();
    const CalendarSettingsServices services = m_calendarServices;
    runAsync(
        this,
        [services, work] {
            const CalendarProvidersResultEntity made = services.registryApplication();
            if (!made.result)
                return made;
            return work(*made.dataAs<CalendarProviderRegistryApplication>());
        },
        [this, action, changes](const CalendarProvidersResultEntity& result) {
            if (!result.result) {
                const QString message = result.firstMessage().value_or(QString());
                m_services.console().appendLine(action + QStringLiteral(" failed: ") + message);
                m_error->setText(message);
                m_error->show();
                return;
            }
            if (changes)
                m_services.notificationCenter().post(NotificationName::calendarAccountsDidChange);
            reload();
        });
}

void CalendarProvidersView::addAccount()
{
    const std::optional<AccountProviderEnum> kind = pickKind(this);
    if (!kind)
        return;
    const int existing = int(m_providers.size());
    runOnRegistry(
        QStringLiteral("CalendarProvidersView.add"),
        [kind = *kind, existing](const CalendarProviderRegistryApplication& registry) {
            const CalendarProvidersResultEntity access = registry.requestAccess(kind);
            if (!access.result)
                return access;
            return registry.registerProvider(defaultDeviceAccount(existing, QDateTime::currentDateTime()));
        },
        true);
}

void CalendarProvidersView::setSelectedEnabled(bool enabled)
{
    std::optional<CalendarProviderEntity> provider = selected();
    if (!provider)
        return;
    provider->capIsEnabled = enabled;
    runOnRegistry(
        QStringLiteral("CalendarProvidersView.update"),
        [provider = *provider](
            const CalendarProviderRegistryApplication& registry) { return registry.updateProvider(provider); },
        true);
}

void CalendarProvidersView::removeSelected()
{
    const std::optional<CalendarProviderEntity> provider = selected();
    if (!provider)
        return;
    //% "Remove this account?"
    QMessageBox box(QMessageBox::Question, qtTrId("accounts-delete-confirmation-title"),
        qtTrId("accounts-delete-confirmation-title"), QMessageBox::NoButton, this);
    box.setObjectName(QStringLiteral("confirmation"));
    box.setInformativeText(provider->capDisplayName);
    //% "Remove"
    QPushButton* confirm = box.addButton(qtTrId("accounts-delete-confirm-button"), QMessageBox::DestructiveRole);
    //% "Cancel"
    QPushButton* cancel = box.addButton(qtTrId("accounts-delete-cancel-button"), QMessageBox::RejectRole);
    box.setDefaultButton(cancel);
    box.exec();
    if (box.clickedButton() != confirm)
        return;
    runOnRegistry(
        QStringLiteral("CalendarProvidersView.delete"),
        [capId = provider->capId](
            const CalendarProviderRegistryApplication& registry) { return registry.removeProvider(capId); },
        true);
}
