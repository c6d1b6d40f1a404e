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
{
    m_label->setTextInteractionFlags(Qt::NoTextInteraction);
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
    return m_label->text();
}

void InlineEditableLabel::setText(const QString& text)
{
    m_label->setText(text);
}

void InlineEditableLabel::setLabelFont(const QFont& font)
{
    m_label->setFont(font);
    if (m_field)
        m_field->setFont(font);
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
    field()->setText(m_label->text());
    m_stack->setCurrentWidget(m_field);
    m_field->setFocus(Qt::OtherFocusReason);
    m_field->selectAll();
}

void InlineEditableLabel::commit()
{
    const QString draft = m_field->text();
    stopEditing();
    if (Text::isBlank(draft) || draft == m_label->text())
        return;
    m_label->setText(draft);
    Q_EMIT committed(draft);
}

void InlineEditableLabel::stopEditing()
{
    m_stack->setCurrentWidget(m_label);
}

bool InlineEditableLabel::eventFilter(QObject* watched, QEvent* event)
{
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
