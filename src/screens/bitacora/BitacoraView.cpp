#include "screens/bitacora/BitacoraView.h"

#include "platform/NotificationCenter.h"
#include "platform/SystemClock.h"
#include "rituals/DayReview.h"
#include "screens/bitacora/BitacoraProjectRowView.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"
#include "screens/common/Icons.h"
#include "screens/schedule/DayTitle.h"
#include "screens/schedule/MiniCalendarView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const QString noConnectionToSave = QStringLiteral("No hay conexión configurada para guardar la bitácora");
const QString noConnectionToDelete = QStringLiteral("No hay conexión configurada para eliminar la bitácora");
const QString savedEntryNotFound = QStringLiteral("No se encontró la entrada guardada para eliminar");

BitacoraView::Environment completed(BitacoraView::Environment environment, const AppServices& services)
{
    if (!environment.clock)
        environment.clock = std::make_shared<SystemClock>();
    if (!environment.scheduler)
        environment.scheduler = BitacoraScheduler::timers();
    if (!environment.holidays) {
        NotificationCenter* center = &services.notificationCenter();
        environment.holidays = [center] { return MiniCalendarHolidaySource::live(*center); };
    }
    return environment;
}

} // namespace

BitacoraView::BitacoraView(const AppServices& services, QWidget* parent)
    : BitacoraView(services, Environment {}, parent)
{
}

BitacoraView::BitacoraView(const AppServices& services, Environment environment, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_environment(completed(std::move(environment), services))
    , m_selectedDate(m_environment.clock->now())
    , m_pages(new QStackedWidget(this))
    , m_header(new QWidget(this))
    , m_dateTitle(new QLabel(this))
    , m_errorLabel(new QLabel(this))
    , m_emptyState(new QLabel(this))
    , m_scroll(new QScrollArea(this))
    , m_rowsContainer(new QWidget(this))
    , m_rowsLayout(new QVBoxLayout(m_rowsContainer))
    , m_confirmation(new QFrame(this))
    , m_confirmationDetail(new QLabel(this))
    , m_dayPickerButton(new QToolButton(this))
{
    setObjectName(QStringLiteral("bitacoraView"));

    auto* loginRequired = new QWidget(m_pages);
    loginRequired->setObjectName(QStringLiteral("bitacoraLoginRequired"));
    auto* logo = new QLabel(loginRequired);
    logo->setObjectName(QStringLiteral("QuorvelLogo"));
    logo->setPixmap(QIcon(QStringLiteral(":/icons/QuorvelLogo.svg")).pixmap(128, 128));
    logo->setAlignment(Qt::AlignCenter);
    auto* loginText = new QLabel(qtTrId("schedule-login-required-state"), loginRequired);
    loginText->setAlignment(Qt::AlignCenter);
    loginText->setEnabled(false);
    auto* loginLayout = new QVBoxLayout(loginRequired);
    loginLayout->addStretch();
    loginLayout->addWidget(logo);
    loginLayout->addWidget(loginText);
    loginLayout->addStretch();

    auto* day = new QWidget(m_pages);
    auto* dayLayout = new QVBoxLayout(day);
    buildHeader(dayLayout);
    m_errorLabel->setObjectName(QStringLiteral("bitacoraErrorMessage"));
    m_errorLabel->setWordWrap(true);
    m_errorLabel->setStyleSheet(QStringLiteral("color: #c62828;"));
    dayLayout->addWidget(m_errorLabel);
    m_emptyState->setObjectName(QStringLiteral("bitacoraEmptyState"));
    //% "Create a project in the projects workspace to start its logbook."
    m_emptyState->setText(qtTrId("bitacora-no-projects-state"));
    m_emptyState->setAlignment(Qt::AlignCenter);
    m_emptyState->setEnabled(false);
    dayLayout->addWidget(m_emptyState);
    m_rowsLayout->setContentsMargins(0, 0, 8, 0);
    m_rowsLayout->addStretch();
    m_scroll->setWidget(m_rowsContainer);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    dayLayout->addWidget(m_scroll, 1);

    m_pages->addWidget(loginRequired);
    m_pages->addWidget(day);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
    buildConfirmation();

    m_services.notificationCenter().addObserver(NotificationName::userAccountDidChange, this, [this](const QVariant&) {
        if (m_started)
            start();
    });
    // The day's review added to entries behind this screen's back: read them again, after
    // whatever waits for its save here, so that a later save starts from the added text.
    m_services.notificationCenter().addObserver(DayReview::logbookWritten, this, [this](const QVariant& object) {
        // Text typed here and not saved yet would replace the stored entry, summary and all: the
        // summary joins it in the editor first.
        const auto written = object.value<DayReview::Written>();
        for (BitacoraProjectRowView* row : rows()) {
            if (row->date().date() == written.date && written.projectIds.contains(row->project().prjId)
                && (row->hasUnsavedChanges() || row->isBusy()))
                row->showText(DayReview::appended(
                    row->text(), written.summary, BitacoraProjectRowView::entryTemplate(written.date)));
        }
        whenRowsSettled([this] { loadDay(); });
    });
    // An undo or redo changed the stores; what waits for its save is not thrown away first.
    m_services.notificationCenter().addObserver(NotificationName::tasksDidChange, this, [this](const QVariant&) {
        if (!m_started)
            return;
        for (BitacoraProjectRowView* row : rows())
            row->flush();
        loadDay();
    });
    render();
}

BitacoraView::~BitacoraView()
{
    // The event loop may be gone: what still waits for its save is saved here and now.
    if (!m_controller)
        return;
    for (BitacoraProjectRowView* row : rows()) {
        if (row->hasUnsavedChanges() && !BitacoraProjectRowView::isTemplateOnly(row->text(), row->date().date()))
            m_controller->saveNow(row->project().prjId, row->date(), row->text());
    }
}

void BitacoraView::buildHeader(QVBoxLayout* layout)
{
    m_header->setObjectName(QStringLiteral("bitacoraHeader"));
    auto* previous = new QToolButton(m_header);
    previous->setObjectName(QStringLiteral("bitacoraPreviousDayButton"));
    previous->setIcon(Icons::symbol(QStringLiteral("chevron.left")));
    previous->setAutoRaise(true);
    //% "Previous day"
    previous->setToolTip(qtTrId("bitacora-previous-day-button"));
    auto* next = new QToolButton(m_header);
    next->setObjectName(QStringLiteral("bitacoraNextDayButton"));
    next->setIcon(Icons::symbol(QStringLiteral("chevron.right")));
    next->setAutoRaise(true);
    //% "Next day"
    next->setToolTip(qtTrId("bitacora-next-day-button"));
    //% "Today"
    auto* today = new QPushButton(qtTrId("daily-events-today-button"), m_header);
    today->setObjectName(QStringLiteral("bitacoraTodayButton"));
    m_dayPickerButton->setObjectName(QStringLiteral("bitacoraDayPickerButton"));
    m_dayPickerButton->setParent(m_header);
    m_dayPickerButton->setIcon(Icons::symbol(QStringLiteral("calendar")));
    m_dayPickerButton->setAutoRaise(true);
    //% "Choose a day"
    m_dayPickerButton->setToolTip(qtTrId("bitacora-choose-day-button"));
    m_dateTitle->setObjectName(QStringLiteral("bitacoraDateTitle"));
    m_dateTitle->setParent(m_header);
    QFont titleFont = m_dateTitle->font();
    titleFont.setPixelSize(titleFontSize);
    titleFont.setBold(true);
    m_dateTitle->setFont(titleFont);

    connect(previous, &QToolButton::clicked, this, [this] { setSelectedDate(m_selectedDate.addDays(-1)); });
    connect(next, &QToolButton::clicked, this, [this] { setSelectedDate(m_selectedDate.addDays(1)); });
    connect(today, &QPushButton::clicked, this, [this] { setSelectedDate(m_environment.clock->now()); });
    connect(m_dayPickerButton, &QToolButton::clicked, this, &BitacoraView::showDayPicker);

    auto* row = new QHBoxLayout(m_header);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_dateTitle, 1);
    row->addWidget(previous);
    row->addWidget(today);
    row->addWidget(next);
    row->addWidget(m_dayPickerButton);
    layout->addWidget(m_header);
}

void BitacoraView::buildConfirmation()
{
    // A veil over the whole screen with the question in the middle: the rows stay in sight but
    // cannot be used until the user answers.
    m_confirmation->setObjectName(QStringLiteral("bitacoraDeleteConfirmation"));
    m_confirmation->setStyleSheet(QStringLiteral("#bitacoraDeleteConfirmation { background: rgba(0, 0, 0, 70); }"));
    auto* card = new QFrame(m_confirmation);
    card->setAutoFillBackground(true);
    card->setFrameShape(QFrame::StyledPanel);
    //% "Delete this day's entry?"
    auto* title = new QLabel(qtTrId("bitacora-delete-confirmation-title"), card);
    QFont titleFont = title->font();
    titleFont.setBold(true);
    title->setFont(titleFont);
    m_confirmationDetail->setParent(card);
    m_confirmationDetail->setTextFormat(Qt::PlainText);
    //% "Delete"
    auto* confirm
        = new QPushButton(Icons::symbol(QStringLiteral("trash")), qtTrId("bitacora-delete-confirm-button"), card);
    confirm->setObjectName(QStringLiteral("bitacoraDeleteConfirmButton"));
    //% "Cancel"
    auto* cancel = new QPushButton(qtTrId("bitacora-delete-cancel-button"), card);
    cancel->setObjectName(QStringLiteral("bitacoraDeleteCancelButton"));
    cancel->setDefault(true);
    connect(confirm, &QPushButton::clicked, this, &BitacoraView::confirmDeletion);
    connect(cancel, &QPushButton::clicked, this, &BitacoraView::cancelDeletion);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(confirm);
    auto* cardLayout = new QVBoxLayout(card);
    cardLayout->addWidget(title);
    cardLayout->addWidget(m_confirmationDetail);
    cardLayout->addLayout(buttons);
    auto* layout = new QVBoxLayout(m_confirmation);
    layout->addStretch();
    layout->addWidget(card, 0, Qt::AlignHCenter);
    layout->addStretch();
    m_confirmation->hide();
}

void BitacoraView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!m_started) {
        m_started = true;
        start();
    }
}

void BitacoraView::hideEvent(QHideEvent* event)
{
    // Leaving the workspace or closing the window: whatever waits for its second is saved now.
    for (BitacoraProjectRowView* row : rows())
        row->flush();
    QWidget::hideEvent(event);
}

void BitacoraView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_confirmation->setGeometry(rect());
}

// Reads the current user and builds the applications for that kind of account.
void BitacoraView::start()
{
    whenRowsSettled([this] {
        const quint64 generation = ++m_generation;
        m_isLoading = true;
        render();
        const AppServices* services = &m_services;
        runAsync(
            this, [services] { return services->tasksSession(); },
            [this, generation](const AppServices::TasksSession& started) {
                if (generation != m_generation)
                    return;
                m_isLoggedIn = started.user.has_value();
                m_knowsUser = true;
                m_controller.reset();
                m_projects.clear();
                m_entries.clear();
                if (!started.user || !started.applications.result) {
                    m_isLoading = false;
                    if (started.user)
                        setErrorMessage(started.applications.firstMessage().value_or(QString()));
                    rebuildRows();
                    render();
                    Q_EMIT loaded();
                    return;
                }
                m_userId = QUuid::fromString(started.user->usrId);
                const auto& applications = *started.applications.dataAs<TasksApplicationFactory::Applications>();
                m_controller = std::make_unique<BitacoraController>(
                    applications.projects, applications.bitacora, m_userId, m_services.console());
                loadDay();
            });
    });
}

void BitacoraView::loadDay()
{
    if (!m_controller)
        return;
    const quint64 generation = ++m_generation;
    m_isLoading = true;
    render();
    m_controller->load(m_selectedDate, this, [this, generation](const ResultEntity& result) {
        if (generation != m_generation)
            return;
        m_isLoading = false;
        if (const auto* day = result.dataAs<BitacoraDayEntity>()) {
            m_projects = day->projects;
            m_entries = day->entries;
        } else {
            m_projects.clear();
            m_entries.clear();
            setErrorMessage(result.firstMessage().value_or(QString()));
        }
        rebuildRows();
        render();
        Q_EMIT loaded();
    });
}

void BitacoraView::setSelectedDate(const QDateTime& date)
{
    if (date == m_selectedDate)
        return;
    m_selectedDate = date;
    setErrorMessage(std::nullopt);
    if (m_miniCalendar)
        m_miniCalendar->setSelectedDate(date.date());
    render();
    if (m_controller)
        whenRowsSettled([this] { loadDay(); });
}

void BitacoraView::whenRowsSettled(std::function<void()> next)
{
    // Only the newest request matters: a second step while the first day still saves loads the
    // day the user ended on.
    m_afterRowsSettled = std::move(next);
    for (BitacoraProjectRowView* row : rows())
        row->flush();
    rowSettled();
}

void BitacoraView::rowSettled()
{
    const QList<BitacoraProjectRowView*> shown = rows();
    if (m_keepsDayForUnsavedText && std::ranges::none_of(shown, &BitacoraProjectRowView::hasFailedSave)) {
        m_keepsDayForUnsavedText = false;
        setErrorMessage(std::nullopt);
    }
    if (!m_afterRowsSettled)
        return;
    if (std::ranges::any_of(shown, &BitacoraProjectRowView::isBusy)) {
        m_isLoading = true;
        render();
        return;
    }
    m_isLoading = false;
    const auto failed = std::ranges::find_if(shown, &BitacoraProjectRowView::hasFailedSave);
    if (failed != shown.end()) {
        // Loading anything else would throw away text that exists nowhere but in its editor: the
        // rows stay, with their day, and keep trying to save.
        m_afterRowsSettled = nullptr;
        stayOn((*failed)->date(), (*failed)->project().prjName);
        return;
    }
    std::function<void()> next = std::exchange(m_afterRowsSettled, nullptr);
    next();
}

void BitacoraView::stayOn(const QDateTime& shownDate, const QString& unsavedProject)
{
    ++m_generation;
    m_selectedDate = shownDate;
    if (m_miniCalendar)
        m_miniCalendar->setSelectedDate(shownDate.date());
    //% "The entry of “%1” could not be saved yet, so this day stays open. Tolvane keeps trying."
    setErrorMessage(qtTrId("bitacora-unsaved-entry-keeps-day").arg(unsavedProject));
    m_keepsDayForUnsavedText = true;
    render();
}

QList<BitacoraProjectRowView*> BitacoraView::rows() const
{
    return m_rowsContainer->findChildren<BitacoraProjectRowView*>(Qt::FindDirectChildrenOnly);
}

BitacoraProjectRowView* BitacoraView::rowFor(const QUuid& projectId) const
{
    for (BitacoraProjectRowView* row : rows()) {
        if (row->project().prjId == projectId)
            return row;
    }
    return nullptr;
}

BitacoraProjectRowView* BitacoraView::makeRow(const ProjectEntity& project)
{
    const std::optional<BitacoraEntryEntity> entry
        = m_entries.contains(project.prjId) ? std::optional(m_entries.value(project.prjId)) : std::nullopt;
    auto* row = new BitacoraProjectRowView(
        project, m_selectedDate, entry ? entry->bteContent : QString(), entry.has_value(),
        [this, project, date = m_selectedDate](const QString& text, std::function<void(std::optional<QString>)> done) {
            saveEntry(project, date, text, std::move(done));
        },
        [this, project] { requestDeletion(project); }, m_environment.scheduler, m_rowsContainer);
    row->setDeleting(m_deletingProjectIds.contains(project.prjId));
    row->setProperty("deletionTick", m_deletionTick.value(project.prjId));
    connect(row, &BitacoraProjectRowView::settled, this, &BitacoraView::rowSettled);
    return row;
}

void BitacoraView::rebuildRows()
{
    for (BitacoraProjectRowView* row : rows())
        delete row;
    int index = 0;
    for (const ProjectEntity& project : std::as_const(m_projects))
        m_rowsLayout->insertWidget(index++, makeRow(project));
}

void BitacoraView::saveEntry(const ProjectEntity& project, const QDateTime& date, const QString& text,
    std::function<void(std::optional<QString>)> done)
{
    if (!m_controller) {
        done(noConnectionToSave);
        return;
    }
    m_controller->save(
        project.prjId, date, text, this, [this, projectId = project.prjId, date, done](const ResultEntity& result) {
            if (!result.result) {
                done(result.firstMessage().value_or(QString()));
                return;
            }
            // The entry is known from now on, so that it can be deleted without a reload.
            const auto* entry = result.dataAs<BitacoraEntryEntity>();
            if (entry && date.date() == m_selectedDate.date())
                m_entries.insert(projectId, *entry);
            done(std::nullopt);
        });
}

void BitacoraView::requestDeletion(const ProjectEntity& project)
{
    m_entryPendingDeletion = project;
    m_confirmationDetail->setText(project.prjName);
    m_confirmation->setGeometry(rect());
    m_confirmation->raise();
    m_confirmation->show();
}

void BitacoraView::cancelDeletion()
{
    m_entryPendingDeletion.reset();
    m_confirmation->hide();
}

void BitacoraView::confirmDeletion()
{
    m_confirmation->hide();
    if (!m_entryPendingDeletion)
        return;
    const ProjectEntity project = *std::exchange(m_entryPendingDeletion, std::nullopt);
    if (!m_controller) {
        setErrorMessage(noConnectionToDelete);
        return;
    }
    const auto entry = m_entries.constFind(project.prjId);
    if (entry == m_entries.cend()) {
        setErrorMessage(savedEntryNotFound);
        return;
    }
    setErrorMessage(std::nullopt);
    m_deletingProjectIds.insert(project.prjId);
    if (BitacoraProjectRowView* row = rowFor(project.prjId)) {
        row->discardUnsavedChanges();
        row->setDeleting(true);
    }
    m_controller->delete_(entry->bteId, this, [this, projectId = project.prjId](const ResultEntity& result) {
        m_deletingProjectIds.remove(projectId);
        BitacoraProjectRowView* row = rowFor(projectId);
        if (!result.result) {
            setErrorMessage(result.firstMessage().value_or(QString()));
            if (row)
                row->setDeleting(false);
            return;
        }
        m_entries.remove(projectId);
        m_deletionTick[projectId] += 1;
        if (!row)
            return;
        // The row starts afresh, empty, in the same place.
        const int index = m_rowsLayout->indexOf(row);
        const ProjectEntity project = row->project();
        delete row;
        m_rowsLayout->insertWidget(index, makeRow(project));
        rowSettled();
    });
}

void BitacoraView::setErrorMessage(std::optional<QString> message)
{
    m_errorMessage = std::move(message);
    m_keepsDayForUnsavedText = false;
    m_errorLabel->setText(m_errorMessage.value_or(QString()));
    m_errorLabel->setVisible(m_errorMessage.has_value());
}

void BitacoraView::showDayPicker()
{
    if (!m_dayPicker) {
        m_dayPicker = new QFrame(this, Qt::Popup);
        m_dayPicker->setObjectName(QStringLiteral("bitacoraDayPicker"));
        m_dayPicker->setFrameShape(QFrame::StyledPanel);
        m_miniCalendar = new MiniCalendarView(m_environment.holidays(), m_environment.clock, m_dayPicker);
        auto* layout = new QVBoxLayout(m_dayPicker);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(m_miniCalendar);
        connect(m_miniCalendar, &MiniCalendarView::onSelectDate, this, [this](const QDate& day) {
            m_dayPicker->hide();
            setSelectedDate(QDateTime(day, m_selectedDate.time()));
        });
    }
    m_miniCalendar->setDisplayedMonth(m_selectedDate.date());
    m_miniCalendar->setSelectedDate(m_selectedDate.date());
    m_dayPicker->adjustSize();
    m_dayPicker->move(m_dayPickerButton->mapToGlobal(
        QPoint(m_dayPickerButton->width() - m_dayPicker->width(), m_dayPickerButton->height())));
    m_dayPicker->show();
}

void BitacoraView::render()
{
    m_pages->setCurrentIndex(m_isLoggedIn || !m_knowsUser ? 1 : 0);
    m_header->setVisible(m_isLoggedIn);
    m_dateTitle->setText(DayTitle::of(m_selectedDate.date()));
    m_rowsContainer->setEnabled(!m_isLoading);
    m_emptyState->setVisible(!m_isLoading && m_projects.isEmpty() && m_controller);
    if (!m_errorMessage)
        m_errorLabel->hide();
}

void BitacoraView::reveal(const QDateTime& date, const QUuid& projectId)
{
    m_revealing = std::pair(date.toLocalTime().date(), projectId);
    connect(this, &BitacoraView::loaded, this, &BitacoraView::revealPendingRow, Qt::UniqueConnection);
    if (date.toLocalTime().date() != m_selectedDate.toLocalTime().date())
        setSelectedDate(date);
    else if (m_controller && !m_isLoading)
        revealPendingRow();
}

void BitacoraView::revealPendingRow()
{
    if (!m_revealing || m_revealing->first != m_selectedDate.toLocalTime().date())
        return;
    const QUuid projectId = m_revealing->second;
    m_revealing.reset();
    BitacoraProjectRowView* row = rowFor(projectId);
    if (!row)
        return;
    m_revealedProjectId = projectId;
    if (auto* editor = row->findChild<QTextEdit*>())
        editor->setFocus(Qt::OtherFocusReason);
    // New rows have their places once the layout has run.
    QTimer::singleShot(0, row, [this, row] { m_scroll->ensureWidgetVisible(row); });
}
