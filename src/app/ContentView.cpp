#include "ContentView.h"

#include "platform/NotificationCenter.h"
#include "screens/common/AppServices.h"
#include "screens/common/Icons.h"
#include "screens/common/LogoPlaceholderView.h"
#include "screens/settings/UserProfileChipView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

// The accent of the sidebar's selection.
const QColor brandColor(0x3E, 0x8B, 0xFF);

} // namespace

ContentView::ContentView(const AppServices& services, ScreenFactory makeScreen, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_makeScreen(std::move(makeScreen))
    , m_sidebar(new QListWidget(this))
    , m_detail(new QStackedWidget(this))
    //% "Choose a workspace in the sidebar"
    , m_placeholder(new LogoPlaceholderView(
          qtTrId("detail-select-option-text"), QStringLiteral("detailSelectOptionText"), 128, this))
{
    setObjectName(QStringLiteral("contentView"));
    auto* sidebarColumn = new QWidget(this);
    sidebarColumn->setObjectName(QStringLiteral("sidebarColumn"));
    sidebarColumn->setFixedWidth(200);
    //% "Tolvane"
    auto* title = new QLabel(qtTrId("sidebar-menu-title"), sidebarColumn);
    QFont titleFont = title->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.2);
    title->setFont(titleFont);
    title->setContentsMargins(8, 8, 8, 4);
    m_sidebar->setObjectName(QStringLiteral("sidebar"));
    m_sidebar->setFrameShape(QFrame::NoFrame);
    m_sidebar->setIconSize(QSize(20, 20));
    m_sidebar->setStyleSheet(
        QStringLiteral("QListWidget { background: transparent; } QListWidget::item { padding: 6px; "
                       "border-radius: 6px; } QListWidget::item:selected { background: %1; "
                       "color: white; }")
            .arg(brandColor.name()));
    for (const SidebarItemEnum item : SidebarItem::allCases) {
        auto* row = new QListWidgetItem(Icons::symbol(SidebarItem::symbol(item)), SidebarItem::label(item), m_sidebar);
        row->setData(Qt::UserRole, int(item));
    }
    auto* chip = new UserProfileChipView(services, sidebarColumn);
    auto* sidebarLayout = new QVBoxLayout(sidebarColumn);
    sidebarLayout->setContentsMargins(4, 4, 4, 4);
    sidebarLayout->addWidget(title);
    sidebarLayout->addWidget(m_sidebar, 1);
    sidebarLayout->addWidget(chip);

    m_detail->addWidget(m_placeholder);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(sidebarColumn);
    auto* separator = new QFrame(this);
    separator->setFrameShape(QFrame::VLine);
    separator->setFrameShadow(QFrame::Plain);
    separator->setForegroundRole(QPalette::Mid);
    layout->addWidget(separator);
    layout->addWidget(m_detail, 1);

    // Selection, not the current row: the list makes its first row current when it takes the
    // focus, which must not open a workspace the user did not choose.
    connect(m_sidebar, &QListWidget::itemSelectionChanged, this, [this] {
        const QList<QListWidgetItem*> chosen = m_sidebar->selectedItems();
        select(chosen.isEmpty() ? std::nullopt
                                : std::optional(SidebarItemEnum(chosen.constFirst()->data(Qt::UserRole).toInt())));
    });
    services.notificationCenter().addObserver(
        NotificationName::openMeetFromAlarm, this, [this](const QVariant& object) {
            pendingMeetNavigation = object.value<MeetAlarmNavigationPayload>();
            pendingDateSelection = pendingMeetNavigation->metDate;
            select(SidebarItemEnum::schedule);
            Q_EMIT pendingMeetNavigationChanged();
        });
}

void ContentView::select(std::optional<SidebarItemEnum> item)
{
    m_selectedSidebarItem = item;
    const int row = item ? int(*item) : -1;
    if (m_sidebar->currentRow() != row || (item && m_sidebar->selectedItems().isEmpty()))
        m_sidebar->setCurrentRow(row);
    if (!item) {
        m_detail->setCurrentWidget(m_placeholder);
        return;
    }
    QWidget* shown = screen(*item);
    if (!shown) {
        shown = m_makeScreen(*item, m_detail);
        m_screens.insert(int(*item), shown);
        m_detail->addWidget(shown);
    }
    m_detail->setCurrentWidget(shown);
}

QWidget* ContentView::screen(SidebarItemEnum item) const
{
    return m_screens.value(int(item), nullptr);
}

void ContentView::openDate(const QDate& day)
{
    pendingDateSelection = QDateTime(day, QTime(12, 0));
    select(SidebarItemEnum::schedule);
    // A schedule already built acts on it now; a new one reads it when it starts.
    Q_EMIT pendingMeetNavigationChanged();
}
