#include "screens/schedule/CreateEventView.h"

#include "meetings/entities/MeetEntity.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

CreateEventView::CreateEventView(bool isEditing, OnSave onSave, QWidget* parent)
    : QDialog(parent)
    , m_isEditing(isEditing)
    , m_onSave(std::move(onSave))
    , m_title(new QLineEdit(this))
    , m_allDay(new QCheckBox(this))
    , m_start(new QDateTimeEdit(this))
    , m_end(new QDateTimeEdit(this))
    , m_duration(new QLabel(this))
    , m_calendar(new QComboBox(this))
    , m_location(new QLineEdit(this))
    , m_link(new QLineEdit(this))
    , m_description(new QPlainTextEdit(this))
    , m_repeat(new QComboBox(this))
    , m_weekdays(new QWidget(this))
    , m_weekdayHint(new QLabel(this))
    , m_summary(new QLabel(this))
    , m_error(new QLabel(this))
    , m_wholeSeriesNote(new QLabel(this))
    , m_save(new QPushButton(this))
    , m_cancel(new QPushButton(this))
{
    setObjectName(QStringLiteral("createEventView"));
    setMinimumWidth(420);
    m_title->setObjectName(QStringLiteral("createEventTitle"));
    //% "Title"
    m_title->setPlaceholderText(qtTrId("create-event-title-placeholder"));
    m_start->setObjectName(QStringLiteral("createEventStart"));
    m_end->setObjectName(QStringLiteral("createEventEnd"));
    m_start->setCalendarPopup(true);
    m_end->setCalendarPopup(true);
    m_allDay->setObjectName(QStringLiteral("createEventAllDay"));
    //% "All day"
    m_allDay->setText(qtTrId("create-event-all-day-toggle"));
    m_calendar->setObjectName(QStringLiteral("createEventCalendar"));
    m_location->setObjectName(QStringLiteral("createEventLocation"));
    //% "Add a place"
    m_location->setPlaceholderText(qtTrId("create-event-location-placeholder"));
    m_link->setObjectName(QStringLiteral("createEventLink"));
    m_link->setPlaceholderText(QStringLiteral("https://"));
    //% "Add a description"
    m_description->setPlaceholderText(qtTrId("create-event-description-placeholder"));
    m_description->setFixedHeight(70);
    m_repeat->setObjectName(QStringLiteral("createEventRepeat"));
    for (const RepeatOption option : Repeat::allCases)
        m_repeat->addItem(Repeat::label(option), int(option));

    auto* weekdayRow = new QHBoxLayout(m_weekdays);
    weekdayRow->setContentsMargins(0, 0, 0, 0);
    const QLocale locale;
    for (const int weekday : {2, 3, 4, 5, 6, 7, 1}) {
        auto* toggle = new QToolButton(m_weekdays);
        toggle->setObjectName(QStringLiteral("createEventWeekday%1").arg(weekday));
        toggle->setCheckable(true);
        toggle->setText(Repeat::weekdayName(weekday, locale, QLocale::ShortFormat));
        toggle->setProperty("weekday", weekday);
        connect(toggle, &QToolButton::toggled, this, &CreateEventView::refresh);
        weekdayRow->addWidget(toggle);
        m_weekdayToggles.append(toggle);
    }
    weekdayRow->addStretch();
    //% "Choose the days it repeats on"
    m_weekdayHint->setText(qtTrId("create-event-repeat-select-day-hint"));
    m_weekdayHint->setEnabled(false);
    m_summary->setObjectName(QStringLiteral("createEventRepeatSummary"));
    m_summary->setEnabled(false);
    // A list of several days is longer than the dialog is wide.
    m_summary->setWordWrap(true);
    m_duration->setEnabled(false);
    m_error->setObjectName(QStringLiteral("createEventError"));
    m_error->setStyleSheet(QStringLiteral("color: #D32F2F;"));
    m_error->setWordWrap(true);

    m_wholeSeriesNote->setObjectName(QStringLiteral("createEventWholeSeriesNote"));
    //% "This event repeats: the change applies to every occurrence."
    m_wholeSeriesNote->setText(qtTrId("create-event-whole-series-note"));
    m_wholeSeriesNote->setWordWrap(true);
    m_wholeSeriesNote->setEnabled(false);
    m_wholeSeriesNote->hide();

    auto* form = new QFormLayout;
    form->addRow(m_title);
    form->addRow(QString(), m_allDay);
    //% "Starts"
    form->addRow(qtTrId("create-event-start-label"), m_start);
    //% "Ends"
    form->addRow(qtTrId("create-event-end-label"), m_end);
    form->addRow(QString(), m_duration);
    //% "Calendar"
    form->addRow(qtTrId("create-event-calendar-label"), m_calendar);
    //% "Location"
    form->addRow(qtTrId("create-event-location-label"), m_location);
    //% "Link"
    form->addRow(qtTrId("create-event-link-label"), m_link);
    //% "Description"
    form->addRow(qtTrId("create-event-description-label"), m_description);
    //% "Repeat"
    form->addRow(qtTrId("create-event-repeat-label"), m_repeat);
    form->addRow(QString(), m_weekdays);
    form->addRow(QString(), m_weekdayHint);
    form->addRow(QString(), m_summary);

    //% "Save"
    m_save->setText(qtTrId("create-event-save-button"));
    m_save->setObjectName(QStringLiteral("createEventSaveButton"));
    m_save->setDefault(true);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(m_save, QDialogButtonBox::AcceptRole);
    // Our own text: the stock button speaks whatever language Qt's own catalogue happens to have.
    //% "Cancel"
    m_cancel->setText(qtTrId("create-event-cancel-button"));
    m_cancel->setObjectName(QStringLiteral("createEventCancelButton"));
    buttons->addButton(m_cancel, QDialogButtonBox::RejectRole);
    connect(m_save, &QPushButton::clicked, this, &CreateEventView::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_wholeSeriesNote);
    layout->addWidget(m_error);
    layout->addWidget(buttons);

    connect(m_title, &QLineEdit::textChanged, this, &CreateEventView::refresh);
    connect(m_start, &QDateTimeEdit::dateTimeChanged, this, [this](const QDateTime& start) {
        // Moving the start keeps the length the user chose, as calendars do.
        if (m_end->dateTime() <= start)
            m_end->setDateTime(start.addSecs(3600));
        refresh();
    });
    connect(m_end, &QDateTimeEdit::dateTimeChanged, this, &CreateEventView::refresh);
    connect(m_allDay, &QCheckBox::toggled, this, [this](bool allDay) {
        showAllDay(allDay);
        refresh();
    });
    connect(m_repeat, &QComboBox::currentIndexChanged, this, &CreateEventView::refresh);
    connect(m_calendar, &QComboBox::currentIndexChanged, this,
        [this] { fitToCalendar(m_calendar->currentData().toString()); });
}

void CreateEventView::fitToCalendar(const QString& calendarIdentifier)
{
    // The backend keeps timed events with no place or link: what it cannot keep is not offered.
    const bool backend = calendarIdentifier == RemoteEventRepositoryImpl::calendarIdentifier;
    if (backend && m_allDay->isChecked())
        m_allDay->setChecked(false);
    m_allDay->setEnabled(!backend);
    m_location->setEnabled(!backend);
    m_link->setEnabled(!backend);
}

CreateEventView::CreateEventView(const QDateTime& start, OnSave onSave, QWidget* parent)
    : CreateEventView(false, std::move(onSave), parent)
{
    //% "New event"
    setWindowTitle(qtTrId("create-event-sheet-title"));
    MeetEntity proposed;
    proposed.metDate = start;
    proposed.metDuration = 3600;
    fill(proposed);
}

CreateEventView::CreateEventView(const MeetEntity& meet, OnSave onSave, QWidget* parent)
    : CreateEventView(true, std::move(onSave), parent)
{
    //% "Edit event"
    setWindowTitle(qtTrId("create-event-sheet-title-edit"));
    fill(meet);
    // The backend keeps no exceptions to a repetition: whatever occurrence was opened, the event
    // as a whole changes.
    m_wholeSeriesNote->setVisible(
        meet.metSource == MeetSource::backend && meet.metRecurrenceFrequency != MeetRecurrenceFrequency::none);
    if (!meet.metCalendarIdentifier.isEmpty())
        m_calendar->addItem(meet.metCalendarName, meet.metCalendarIdentifier);
    m_calendar->setEnabled(false);
    fitToCalendar(meet.metCalendarIdentifier);
}

void CreateEventView::fill(const MeetEntity& meet)
{
    m_title->setText(meet.metName);
    m_description->setPlainText(meet.metDescription);
    m_location->setText(meet.metLocation.value_or(QString()));
    m_link->setText(meet.metUrl ? meet.metUrl->toString() : QString());
    m_start->setDateTime(meet.metDate.toLocalTime());
    // An all-day meet ends at the midnight after its last day; the field shows that last day.
    m_end->setDateTime(meet.metIsAllDay ? meet.endDate().toLocalTime().addDays(-1) : meet.endDate().toLocalTime());
    m_allDay->setChecked(meet.metIsAllDay);
    showAllDay(meet.metIsAllDay);
    m_repeat->setCurrentIndex(m_repeat->findData(int(Repeat::option(meet.metRecurrenceFrequency))));
    for (QToolButton* toggle : std::as_const(m_weekdayToggles))
        toggle->setChecked(meet.metRecurringWeekdays.contains(toggle->property("weekday").toInt()));
    refresh();
}

void CreateEventView::showAllDay(bool allDay)
{
    const QLocale locale;
    const QString format
        = allDay ? locale.dateFormat(QLocale::ShortFormat) : locale.dateTimeFormat(QLocale::ShortFormat);
    // A format without a time sets the times to midnight: kept aside, they come back when the
    // meet is made timed again.
    if (allDay)
        m_timedHours = {m_start->time(), m_end->time()};
    m_start->setDisplayFormat(format);
    m_end->setDisplayFormat(format);
    if (!allDay && m_timedHours) {
        m_start->setTime(m_timedHours->first);
        m_end->setTime(m_timedHours->second);
    }
}

void CreateEventView::setCalendars(const QList<CalendarStoreCalendar>& calendars, const QString& preselected)
{
    if (m_isEditing)
        return;
    m_calendar->clear();
    for (const CalendarStoreCalendar& calendar : calendars) {
        if (!calendar.writable)
            continue;
        QPixmap swatch(12, 12);
        swatch.fill(QColor(calendar.color.isEmpty() ? QStringLiteral("#808080") : calendar.color));
        m_calendar->addItem(QIcon(swatch), calendar.title, calendar.identifier);
    }
    const int chosen = m_calendar->findData(preselected);
    m_calendar->setCurrentIndex(chosen >= 0 ? chosen : 0);
    m_calendar->setEnabled(m_calendar->count() > 1);
    fitToCalendar(m_calendar->currentData().toString());
}

QToolButton* CreateEventView::weekdayToggle(int weekday) const
{
    for (QToolButton* toggle : m_weekdayToggles) {
        if (toggle->property("weekday").toInt() == weekday)
            return toggle;
    }
    return nullptr;
}

MeetDraft CreateEventView::draft() const
{
    MeetDraft draft;
    draft.title = m_title->text().trimmed();
    draft.description = m_description->toPlainText();
    draft.isAllDay = m_allDay->isChecked();
    if (draft.isAllDay) {
        draft.start = QDateTime(m_start->date(), QTime(0, 0));
        draft.end = QDateTime(m_end->date().addDays(1), QTime(0, 0));
    } else {
        draft.start = m_start->dateTime();
        draft.end = m_end->dateTime();
    }
    if (const QString place = m_location->text().trimmed(); !place.isEmpty())
        draft.location = place;
    if (const QString link = m_link->text().trimmed(); !link.isEmpty())
        draft.url = QUrl::fromUserInput(link);
    if (!m_isEditing && m_calendar->currentIndex() >= 0)
        draft.calendarIdentifier = m_calendar->currentData().toString();
    draft.recurrence = Repeat::frequency(RepeatOption(m_repeat->currentData().toInt()));
    if (draft.recurrence == MeetRecurrenceFrequency::weekly) {
        for (const QToolButton* toggle : m_weekdayToggles) {
            if (toggle->isChecked())
                draft.weekdays.insert(toggle->property("weekday").toInt());
        }
    }
    return draft;
}

QString CreateEventView::repetitionSummary() const
{
    return m_summary->isHidden() ? QString() : m_summary->text();
}

std::optional<QString> CreateEventView::validationError() const
{
    const MeetDraft values = draft();
    if (values.title.isEmpty())
        //% "Give the event a title"
        return qtTrId("create-event-title-required-error");
    if (values.end < values.start)
        //% "The event cannot end before it starts"
        return qtTrId("create-event-end-before-start-error");
    if (values.url && (!values.url->isValid() || values.url->host().isEmpty()))
        //% "The link is not a web address."
        return qtTrId("create-event-link-invalid-error");
    return std::nullopt;
}

void CreateEventView::refresh()
{
    const MeetDraft values = draft();
    const qint64 minutes = values.start.secsTo(values.end) / 60;
    //% "%1 h %2 min"
    m_duration->setText(qtTrId("create-event-duration-caption-format").arg(minutes / 60).arg(minutes % 60));
    m_duration->setVisible(!values.isAllDay);
    const bool weekly = values.recurrence == MeetRecurrenceFrequency::weekly;
    m_weekdays->setVisible(weekly);
    m_weekdayHint->setVisible(weekly);
    const std::optional<QString> summary = Repeat::summary(values.recurrence, values.weekdays);
    m_summary->setText(summary.value_or(QString()));
    m_summary->setVisible(summary.has_value());
    m_save->setEnabled(!m_isSaving);
    m_error->setText(m_errorMessage.value_or(QString()));
    m_error->setVisible(m_errorMessage.has_value());
}

void CreateEventView::save()
{
    if (m_isSaving)
        return;
    if (const std::optional<QString> invalid = validationError()) {
        m_errorMessage = invalid;
        refresh();
        return;
    }
    m_isSaving = true;
    m_errorMessage.reset();
    refresh();
    m_onSave(draft(), [this](const std::optional<QString>& errorMessage) {
        m_isSaving = false;
        if (!errorMessage) {
            accept();
            return;
        }
        m_errorMessage = errorMessage;
        refresh();
    });
}

void CreateEventView::showDeletedElsewhere()
{
    // clang-format off
    //% "This event was deleted in another program. What you typed is kept; copy it before closing."
    m_errorMessage = qtTrId("create-event-deleted-elsewhere");
    // clang-format on
    refresh();
}
