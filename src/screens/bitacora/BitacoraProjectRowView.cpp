#include "screens/bitacora/BitacoraProjectRowView.h"

#include "screens/common/Icons.h"
#include "screens/schedule/ElidedLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const QString bullet = QStringLiteral("\u2022");

} // namespace

BitacoraProjectRowView::BitacoraProjectRowView(ProjectEntity project, QDateTime date, const QString& initialContent,
    bool hasSavedEntry, SaveAction onSave, std::function<void()> onDeleteRequested,
    std::shared_ptr<BitacoraScheduler> scheduler, QWidget* parent)
    : QWidget(parent)
    , m_project(std::move(project))
    , m_date(std::move(date))
    , m_hasSavedEntry(hasSavedEntry)
    , m_onSave(std::move(onSave))
    , m_onDeleteRequested(std::move(onDeleteRequested))
    , m_scheduler(std::move(scheduler))
    , m_text(initialContent)
    , m_editor(new QTextEdit(this))
    , m_deleteButton(new QToolButton(this))
    , m_statusIcon(new QLabel(this))
    , m_statusText(new QLabel(this))
{
    setObjectName(QStringLiteral("bitacoraRow:") + m_project.prjId.toString(QUuid::WithoutBraces));
    auto* name = new ElidedLabel(m_project.prjName, this);
    name->setObjectName(QStringLiteral("bitacoraProjectName"));
    QFont nameFont = name->font();
    nameFont.setBold(true);
    name->setFont(nameFont);

    m_statusIcon->setObjectName(QStringLiteral("bitacoraSaveStatus"));
    m_statusText->setObjectName(QStringLiteral("bitacoraSaveError"));
    m_statusText->setWordWrap(true);
    m_statusText->setStyleSheet(QStringLiteral("color: #c62828;"));
    m_deleteButton->setObjectName(QStringLiteral("bitacoraDeleteButton"));
    m_deleteButton->setIcon(Icons::symbol(QStringLiteral("trash")));
    m_deleteButton->setAutoRaise(true);
    //% "Delete this day's entry"
    m_deleteButton->setToolTip(qtTrId("bitacora-delete-button"));
    connect(m_deleteButton, &QToolButton::clicked, this, [this] { m_onDeleteRequested(); });

    m_editor->setObjectName(QStringLiteral("bitacoraEditor"));
    m_editor->setAcceptRichText(false);
    m_editor->setTabChangesFocus(true);
    //% "Write what happened in this project today"
    m_editor->setPlaceholderText(qtTrId("bitacora-entry-placeholder"));
    m_editor->setMinimumHeight(90);
    m_editor->setPlainText(m_text);
    m_editor->installEventFilter(this);
    connect(m_editor, &QTextEdit::textChanged, this, &BitacoraProjectRowView::textDidChange);

    auto* header = new QHBoxLayout;
    header->addWidget(name);
    header->addStretch();
    header->addWidget(m_statusText);
    header->addWidget(m_statusIcon);
    header->addWidget(m_deleteButton);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 6, 0, 6);
    layout->addLayout(header);
    layout->addWidget(m_editor);
    render();
}

QString BitacoraProjectRowView::entryTemplate(const QDate& day)
{
    return QString::number(day.day()) + QStringLiteral(":\n\n") + bullet + QLatin1Char(' ');
}

bool BitacoraProjectRowView::isTemplateOnly(const QString& text, const QDate& day)
{
    const QString prefix = QString::number(day.day()) + QLatin1Char(':');
    const QString rest = (text.startsWith(prefix) ? text.mid(prefix.size()) : text).trimmed();
    return rest.isEmpty() || rest == bullet;
}

bool BitacoraProjectRowView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_editor && event->type() == QEvent::FocusIn) {
        m_isFocused = true;
        if (m_editor->toPlainText().isEmpty()) {
            m_editor->setPlainText(entryTemplate(m_date.date()));
            m_editor->moveCursor(QTextCursor::End);
        }
    } else if (watched == m_editor && event->type() == QEvent::FocusOut) {
        m_isFocused = false;
        if (isTemplateOnly(m_editor->toPlainText(), m_date.date()) && !m_editor->toPlainText().isEmpty())
            m_editor->clear();
    }
    return QWidget::eventFilter(watched, event);
}

void BitacoraProjectRowView::textDidChange()
{
    m_text = m_editor->toPlainText();
    setSaveSuccess(false);
    if (!m_hasSavedEntry && isTemplateOnly(m_text, m_date.date())) {
        // A bare template is no entry: nothing is stored until something is written in it.
        cancelAutosave();
        m_pendingResave = false;
        return;
    }
    if (m_isSaving) {
        m_pendingResave = true;
        return;
    }
    cancelAutosave();
    m_autosaveTask = m_scheduler->schedule(autosaveDelay, this, [this] {
        m_autosaveTask.reset();
        save();
    });
}

void BitacoraProjectRowView::cancelAutosave()
{
    if (m_autosaveTask)
        m_scheduler->cancel(*m_autosaveTask);
    m_autosaveTask.reset();
}

void BitacoraProjectRowView::flush()
{
    if (!m_autosaveTask || m_isSaving)
        return;
    cancelAutosave();
    save();
}

void BitacoraProjectRowView::discardUnsavedChanges()
{
    cancelAutosave();
    m_pendingResave = false;
}

void BitacoraProjectRowView::save()
{
    m_isSaving = true;
    m_saveErrorMessage.reset();
    render();
    if (isTemplateOnly(m_text, m_date.date())) {
        m_isSaving = false;
        render();
        if (!hasUnsavedChanges())
            Q_EMIT settled();
        return;
    }
    Q_EMIT saveStarted(m_text);
    m_onSave(m_text, [row = QPointer(this)](std::optional<QString> errorMessage) {
        if (row)
            row->saveAnswered(errorMessage);
    });
}

void BitacoraProjectRowView::saveAnswered(const std::optional<QString>& errorMessage)
{
    if (errorMessage) {
        m_saveErrorMessage = errorMessage;
        ++m_failedSaves;
    } else {
        m_failedSaves = 0;
        m_hasSavedEntry = true;
        setSaveSuccess(true);
        if (m_saveSuccessTask)
            m_scheduler->cancel(*m_saveSuccessTask);
        m_saveSuccessTask = m_scheduler->schedule(saveSuccessDuration, this, [this] {
            m_saveSuccessTask.reset();
            setSaveSuccess(false);
        });
    }
    m_isSaving = false;
    render();
    if (m_pendingResave) {
        m_pendingResave = false;
        save();
        return;
    }
    if (errorMessage && !m_autosaveTask)
        scheduleRetry();
    if (errorMessage || !m_autosaveTask)
        Q_EMIT settled();
}

void BitacoraProjectRowView::scheduleRetry()
{
    auto delay = firstRetryDelay;
    for (int failure = 1; failure < m_failedSaves && delay < longestRetryDelay; ++failure)
        delay *= 2;
    m_autosaveTask = m_scheduler->schedule(std::min(delay, longestRetryDelay), this, [this] {
        m_autosaveTask.reset();
        save();
    });
}

void BitacoraProjectRowView::setSaveSuccess(bool success)
{
    if (m_saveSuccess == success)
        return;
    m_saveSuccess = success;
    render();
}

void BitacoraProjectRowView::showText(const QString& text)
{
    if (text == m_text)
        return;
    if (!m_text.isEmpty() && text.startsWith(m_text)) {
        QTextCursor end(m_editor->document());
        end.movePosition(QTextCursor::End);
        end.insertText(text.mid(m_text.size()));
    } else {
        m_editor->setPlainText(text);
    }
}

void BitacoraProjectRowView::setDeleting(bool isDeleting)
{
    m_isDeleting = isDeleting;
    render();
}

void BitacoraProjectRowView::render()
{
    m_deleteButton->setVisible(m_hasSavedEntry);
    m_deleteButton->setEnabled(!m_isDeleting);
    m_editor->setReadOnly(m_isDeleting);
    const int iconSize = 16;
    if (m_isDeleting) {
        //% "Deleting…"
        m_statusText->setText(qtTrId("bitacora-deleting-state"));
        m_statusIcon->clear();
    } else if (m_saveErrorMessage) {
        m_statusText->setText(*m_saveErrorMessage);
        m_statusIcon->setPixmap(
            Icons::symbol(QStringLiteral("exclamationmark.triangle.fill")).pixmap(iconSize, iconSize));
    } else if (m_saveSuccess) {
        m_statusText->clear();
        m_statusIcon->setPixmap(Icons::symbol(QStringLiteral("checkmark.circle.fill")).pixmap(iconSize, iconSize));
    } else {
        m_statusText->clear();
        m_statusIcon->clear();
    }
    m_statusIcon->setToolTip(m_saveErrorMessage.value_or(QString()));
}
