#include "screens/schedule/MeetDetailView.h"

#include "screens/common/Icons.h"
#include "screens/schedule/DailyEventCardView.h"

#include <QDesktopServices>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

MeetDetailView::MeetDetailView(const MeetEntity& meet, bool isAlarmSet, QWidget* parent)
    : QDialog(parent)
    , m_meet(meet)
    , m_isAlarmSet(isAlarmSet)
    , m_alarm(new QPushButton(this))
{
    setObjectName(QStringLiteral("meetDetailView"));
    setWindowTitle(meet.metName);
    setAttribute(Qt::WA_DeleteOnClose);
    setMinimumWidth(360);
    auto* layout = new QVBoxLayout(this);
    auto* name = new QLabel(meet.metName, this);
    name->setObjectName(QStringLiteral("meetDetailName"));
    name->setTextFormat(Qt::PlainText);
    name->setWordWrap(true);
    QFont titleFont = name->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.3);
    name->setFont(titleFont);
    layout->addWidget(name);
    const QLocale locale;
    const QString when = meet.metIsAllDay ? locale.toString(meet.metDate.toLocalTime().date(), QLocale::LongFormat)
                                          : locale.toString(meet.metDate.toLocalTime().date(), QLocale::LongFormat)
            + QStringLiteral(", ") + DailyEventCardView::timeText(meet);
    auto* time = new QLabel(when, this);
    time->setObjectName(QStringLiteral("meetDetailTime"));
    layout->addWidget(time);
    if (!meet.metDescription.isEmpty()) {
        auto* description = new QLabel(meet.metDescription, this);
        description->setTextFormat(Qt::PlainText);
        description->setWordWrap(true);
        description->setTextInteractionFlags(Qt::TextSelectableByMouse);
        layout->addWidget(description);
    }
    if (meet.metLocation && !meet.metLocation->isEmpty()) {
        auto* row = new QHBoxLayout;
        auto* pin = new QLabel(this);
        pin->setPixmap(Icons::symbol(QStringLiteral("mappin")).pixmap(14, 14));
        row->addWidget(pin);
        auto* location = new QLabel(*meet.metLocation, this);
        location->setTextFormat(Qt::PlainText);
        row->addWidget(location, 1);
        layout->addLayout(row);
    }
    auto* calendar = new QLabel(meet.metCalendarName, this);
    calendar->setEnabled(false);
    layout->addWidget(calendar);

    auto* buttons = new QHBoxLayout;
    //% "Edit"
    auto* edit = new QPushButton(Icons::symbol(QStringLiteral("pencil")), qtTrId("meet-detail-edit-button"), this);
    edit->setObjectName(QStringLiteral("meetDetailEditButton"));
    connect(edit, &QPushButton::clicked, this, [this] {
        close();
        Q_EMIT onEdit();
    });
    buttons->addWidget(edit);
    if (meet.metUrl && meet.metUrl->isValid()) {
        //% "Join"
        auto* join = new QPushButton(qtTrId("meet-detail-join-button"), this);
        join->setObjectName(QStringLiteral("meetDetailJoinButton"));
        connect(join, &QPushButton::clicked, this, [url = *meet.metUrl] { QDesktopServices::openUrl(url); });
        buttons->addWidget(join);
    }
    m_alarm->setObjectName(QStringLiteral("meetAlarmButton"));
    m_alarm->setIcon(Icons::symbol(QStringLiteral("alarm")));
    m_alarm->setCheckable(true);
    m_alarm->setVisible(!meet.metIsAllDay);
    connect(m_alarm, &QPushButton::clicked, this, [this](bool checked) {
        if (m_isTogglingAlarm)
            return;
        m_isTogglingAlarm = true;
        render();
        Q_EMIT alarmToggled(m_meet, checked);
    });
    buttons->addWidget(m_alarm);
    buttons->addStretch();
    //% "Delete"
    auto* remove = new QPushButton(Icons::symbol(QStringLiteral("trash")), qtTrId("meet-detail-delete-button"), this);
    remove->setObjectName(QStringLiteral("meetDetailDeleteButton"));
    connect(remove, &QPushButton::clicked, this, [this] {
        close();
        Q_EMIT onDelete();
    });
    buttons->addWidget(remove);
    layout->addLayout(buttons);
    render();
}

void MeetDetailView::finishTogglingAlarm(bool isAlarmSet)
{
    m_isTogglingAlarm = false;
    m_isAlarmSet = isAlarmSet;
    render();
}

void MeetDetailView::render()
{
    m_alarm->setText(qtTrId("meet-alarm-button"));
    m_alarm->setChecked(m_isAlarmSet);
    m_alarm->setEnabled(!m_isTogglingAlarm);
}
