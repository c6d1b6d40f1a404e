#include "screens/quickadd/QuickAddView.h"

#include "platform/Text.h"
#include "rituals/QuickAdd.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QStringListModel>
#include <QToolButton>
#include <QVBoxLayout>

using namespace QuickAddParser;

namespace {

// What a chip's tooltip says it understood.
QString meaning(const Phrase& phrase, const Fields& fields)
{
    const QLocale locale;
    QString detail;
    if (phrase.kind == PhraseKindEnum::date && fields.dueDay)
        detail = locale.toString(*fields.dueDay, QLocale::LongFormat);
    else if (phrase.kind == PhraseKindEnum::time && fields.dueTime)
        detail = locale.toString(*fields.dueTime, QLocale::ShortFormat);
    else if (phrase.kind == PhraseKindEnum::project)
        detail = fields.project;
    else if (phrase.kind == PhraseKindEnum::list)
        detail = fields.list;
    return detail.isEmpty() ? kindLabel(phrase.kind) : kindLabel(phrase.kind) + QStringLiteral(": ") + detail;
}

} // namespace

QuickAddView::QuickAddView(const AppServices& services, QWidget* parent)
    : QDialog(parent)
    , m_services(services)
    , m_field(new QLineEdit(this))
    , m_chips(new QWidget(this))
    , m_chipsLayout(new QHBoxLayout(m_chips))
    , m_message(new QLabel(this))
    , m_completer(new QCompleter(this))
    , m_completions(new QStringListModel(this))
{
    setObjectName(QStringLiteral("quickAddView"));
    //% "Quick add"
    setWindowTitle(qtTrId("quick-add-title"));
    setMinimumWidth(520);
    m_field->setObjectName(QStringLiteral("quickAddField"));
    //% "Call Ana tomorrow at 3pm #Project /List !1"
    m_field->setPlaceholderText(qtTrId("quick-add-placeholder"));
    m_field->setClearButtonEnabled(true);
    m_field->installEventFilter(this);
    m_chips->setObjectName(QStringLiteral("quickAddChips"));
    m_chipsLayout->setContentsMargins(0, 0, 0, 0);
    m_chipsLayout->setSpacing(4);
    m_chipsLayout->addStretch(1);
    m_message->setObjectName(QStringLiteral("quickAddMessage"));
    m_message->setWordWrap(true);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_message->hide();

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_field);
    layout->addWidget(m_chips);
    layout->addWidget(m_message);

    m_completer->setModel(m_completions);
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_completer->setCompletionMode(QCompleter::PopupCompletion);
    m_completer->setWidget(m_field);
    m_completer->popup()->setObjectName(QStringLiteral("quickAddCompletions"));
    connect(m_completer, qOverload<const QString&>(&QCompleter::activated), this, &QuickAddView::complete);

    connect(m_field, &QLineEdit::textEdited, this, [this] {
        reparse();
        offerCompletion();
    });
    connect(m_field, &QLineEdit::textChanged, this, [this] {
        m_message->hide();
        reparse();
    });
    connect(m_field, &QLineEdit::returnPressed, this, [this] {
        // Enter that picks a completion is not Enter that saves.
        if (!m_completer->popup()->isVisible())
            save();
    });

    const AppServices* source = &m_services;
    runAsync(
        this,
        [source] {
            const AppServices::TasksSession session = source->tasksSession();
            if (!session.user || !session.applications.result)
                return QuickAdd::Catalogue();
            return QuickAdd::catalogue(*session.applications.dataAs<TasksApplicationFactory::Applications>(),
                QUuid::fromString(session.user->usrId));
        },
        [this](const QuickAdd::Catalogue& catalogue) {
            m_catalogue = catalogue;
            m_names = catalogue.names();
            m_ready = true;
            reparse();
        });
}

void QuickAddView::setOpenPlace(const QuickAdd::OpenPlace& open)
{
    m_open = open;
    reparse();
}

void QuickAddView::reparse()
{
    Options options;
    options.projects = m_names;
    options.openProject = m_catalogue.nameOf(m_open.projectId);
    // A phrase taken back and then edited away is forgotten: it would never match again.
    const QString text = m_field->text();
    m_dismissed.removeIf(
        [&text](const Phrase& phrase) { return text.mid(phrase.start, phrase.length) != phrase.text; });
    options.dismissed = m_dismissed;
    m_fields = parse(text, options);
    showChips();
}

void QuickAddView::showChips()
{
    while (m_chipsLayout->count() > 1) {
        QLayoutItem* item = m_chipsLayout->takeAt(0);
        delete item->widget();
        delete item;
    }
    int index = 0;
    for (const Phrase& phrase : std::as_const(m_fields.phrases)) {
        auto* chip = new QFrame(m_chips);
        chip->setObjectName(QStringLiteral("chip:") + phrase.text);
        chip->setFrameShape(QFrame::StyledPanel);
        chip->setToolTip(meaning(phrase, m_fields));
        auto* chipLayout = new QHBoxLayout(chip);
        chipLayout->setContentsMargins(6, 1, 1, 1);
        chipLayout->setSpacing(2);
        chipLayout->addWidget(new QLabel(phrase.text, chip));
        auto* remove = new QToolButton(chip);
        remove->setObjectName(QStringLiteral("chipRemove"));
        remove->setText(QStringLiteral("\u00d7"));
        remove->setAutoRaise(true);
        remove->setFocusPolicy(Qt::NoFocus);
        //% "Keep these words in the title"
        remove->setToolTip(qtTrId("quick-add-chip-remove"));
        chipLayout->addWidget(remove);
        connect(remove, &QToolButton::clicked, this, [this, phrase] { takeBack(phrase); });
        m_chipsLayout->insertWidget(index++, chip);
    }
    m_chips->setVisible(!m_fields.phrases.isEmpty());
}

void QuickAddView::takeBack(const Phrase& phrase)
{
    m_dismissed.append(phrase);
    reparse();
    m_field->setFocus(Qt::OtherFocusReason);
}

bool QuickAddView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Backspace && m_field->cursorPosition() == 0 && !m_field->hasSelectedText()
            && !m_fields.phrases.isEmpty()) {
            takeBack(m_fields.phrases.constLast());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void QuickAddView::save()
{
    if (m_saving)
        return;
    const QString text = m_field->text();
    if (Text::isBlank(text)) {
        //% "Type the task first, for example “Call Ana tomorrow at 3pm”."
        m_message->setText(qtTrId("quick-add-empty"));
        m_message->show();
        return;
    }
    m_saving = true;
    m_field->setReadOnly(true);
    Options options;
    options.dismissed = m_dismissed;
    const AppServices* source = &m_services;
    const QuickAdd::OpenPlace open = m_open;
    runAsync(
        this,
        [source, text, options, open] {
            const AppServices::TasksSession session = source->tasksSession();
            if (!session.user)
                return QuickAdd::Outcome {false, qtTrId("quick-add-no-account").arg(text), std::nullopt};
            if (!session.applications.result)
                return QuickAdd::Outcome {false,
                    qtTrId("quick-add-failed").arg(text, session.applications.firstMessage().value_or(QString())),
                    std::nullopt};
            return QuickAdd::add(*session.applications.dataAs<TasksApplicationFactory::Applications>(),
                QUuid::fromString(session.user->usrId), text, open, options);
        },
        [this](const QuickAdd::Outcome& outcome) {
            m_saving = false;
            m_field->setReadOnly(false);
            if (!outcome.added) {
                m_services.console().appendLine(QStringLiteral("QuickAddView.save failed: ") + outcome.notice);
                m_message->setText(outcome.notice);
                m_message->show();
                m_field->setFocus(Qt::OtherFocusReason);
                return;
            }
            Q_EMIT added(outcome.notice);
            accept();
        });
}

QAbstractItemView* QuickAddView::completions() const
{
    return m_completer->popup();
}

int QuickAddView::completionStart() const
{
    const QString text = m_field->text();
    const int cursor = m_field->cursorPosition();
    for (int at = cursor - 1; at >= 0 && cursor - at <= 60; --at) {
        const QChar c = text.at(at);
        if ((c == QLatin1Char('#') || c == QLatin1Char('/')) && (at == 0 || text.at(at - 1).isSpace()))
            return at;
    }
    return -1;
}

void QuickAddView::offerCompletion()
{
    const int start = completionStart();
    if (start < 0) {
        m_completer->popup()->hide();
        return;
    }
    const QString text = m_field->text();
    const bool isProject = text.at(start) == QLatin1Char('#');
    // A /List alone is looked for in the open project first: its lists come first.
    const QString openProject = m_catalogue.nameOf(m_open.projectId);
    QStringList candidates;
    for (const ProjectNames& project : std::as_const(m_names)) {
        if (isProject)
            candidates.append(project.name);
        else if (!m_fields.project.isEmpty() ? project.name == m_fields.project : project.name == openProject)
            candidates.append(project.lists);
    }
    if (!isProject && m_fields.project.isEmpty()) {
        for (const ProjectNames& project : std::as_const(m_names)) {
            if (project.name != openProject)
                candidates.append(project.lists);
        }
    }
    candidates.removeDuplicates();
    const QString typed = text.mid(start + 1, m_field->cursorPosition() - start - 1);
    m_completions->setStringList(candidates);
    m_completer->setCompletionPrefix(typed);
    const bool finished = m_completer->completionCount() == 1
        && m_completer->currentCompletion().compare(typed, Qt::CaseInsensitive) == 0;
    if (m_completer->completionCount() == 0 || finished) {
        m_completer->popup()->hide();
        return;
    }
    m_completer->complete();
}

void QuickAddView::complete(const QString& name)
{
    const int start = completionStart();
    if (start < 0)
        return;
    const QString text = m_field->text();
    const int cursor = m_field->cursorPosition();
    const QString replacement = text.at(start) + name + QLatin1Char(' ');
    QString after = text.mid(cursor);
    if (after.startsWith(QLatin1Char(' ')))
        after.remove(0, 1);
    m_field->setText(text.left(start) + replacement + after);
    m_field->setCursorPosition(start + int(replacement.size()));
}
