#include "screens/common/InlineEditableLabel.h"

#include "platform/Text.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>

InlineEditableLabel::InlineEditableLabel(const QString& text, QWidget* parent)
    : QWidget(parent)
    , m_stack(new QStackedWidget(this))
    , m_label(new QLabel(text, this))
    , m_text(text)
{
    m_label->setObjectName(QStringLiteral("editableText"));
    m_label->setTextInteractionFlags(Qt::NoTextInteraction);
    // A name is shown as typed: "<b>" or "&" in it are text.
    m_label->setTextFormat(Qt::PlainText);
    m_label->setWordWrap(true);
    m_label->installEventFilter(this);
    m_stack->addWidget(m_label);
    m_stack->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_stack);
    setFocusPolicy(Qt::StrongFocus);
}

// Most labels are never renamed; their field is made the first time one is.
QLineEdit* InlineEditableLabel::field()
{
    if (!m_field) {
        m_field = new QLineEdit(this);
        m_field->setFont(m_label->font());
        m_field->installEventFilter(this);
        m_stack->addWidget(m_field);
        connect(m_field, &QLineEdit::returnPressed, this, &InlineEditableLabel::commit);
    }
    return m_field;
}

QString InlineEditableLabel::text() const
{
    return m_text;
}

void InlineEditableLabel::setText(const QString& text)
{
    m_text = text;
    showText();
}

void InlineEditableLabel::setElided(bool elided)
{
    m_isElided = elided;
    m_label->setWordWrap(!elided);
    // Elided, the label takes the width it is given instead of asking for the whole text's.
    m_label->setSizePolicy(elided ? QSizePolicy::Ignored : QSizePolicy::Preferred, QSizePolicy::Preferred);
    m_label->setMinimumWidth(elided ? m_label->fontMetrics().horizontalAdvance(QStringLiteral("MMM…")) : 0);
    showText();
}

void InlineEditableLabel::showText()
{
    if (!m_isElided) {
        m_label->setText(m_text);
        return;
    }
    const QString shown = m_label->fontMetrics().elidedText(m_text, Qt::ElideRight, m_label->width());
    m_label->setText(shown);
    m_label->setToolTip(shown == m_text ? QString() : m_text);
}

void InlineEditableLabel::setLabelFont(const QFont& font)
{
    m_label->setFont(font);
    if (m_field)
        m_field->setFont(font);
    showText();
}

void InlineEditableLabel::setStruckOut(bool struckOut)
{
    QFont font = m_label->font();
    font.setStrikeOut(struckOut);
    m_label->setFont(font);
    m_label->setEnabled(!struckOut);
}

bool InlineEditableLabel::isEditing() const
{
    return m_field && m_stack->currentWidget() == m_field;
}

void InlineEditableLabel::startEditing()
{
    field()->setText(m_text);
    m_stack->setCurrentWidget(m_field);
    m_field->setFocus(Qt::OtherFocusReason);
    m_field->selectAll();
}

void InlineEditableLabel::commit()
{
    const QString draft = m_field->text();
    stopEditing();
    if (Text::isBlank(draft) || draft == m_text)
        return;
    setText(draft);
    Q_EMIT committed(draft);
}

void InlineEditableLabel::stopEditing()
{
    m_stack->setCurrentWidget(m_label);
}

bool InlineEditableLabel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_label && event->type() == QEvent::Resize && m_isElided)
        showText();
    if (watched == m_label && event->type() == QEvent::MouseButtonDblClick) {
        startEditing();
        return true;
    }
    if (m_field && watched == m_field) {
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            stopEditing();
            return true;
        }
        if (event->type() == QEvent::FocusOut && isEditing())
            commit();
    }
    return QWidget::eventFilter(watched, event);
}
