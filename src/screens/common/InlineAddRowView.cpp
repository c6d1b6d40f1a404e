#include "screens/common/InlineAddRowView.h"

#include "platform/Text.h"
#include "screens/common/Icons.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>

InlineAddRowView::InlineAddRowView(const QString& name, const QString& text, QWidget* parent)
    : QWidget(parent)
    , m_stack(new QStackedWidget(this))
    , m_button(new QPushButton(Icons::symbol(QStringLiteral("plus")), text, this))
    , m_field(new QLineEdit(this))
{
    setObjectName(QStringLiteral("inlineAdd:") + name);
    m_button->setFlat(true);
    m_button->setCursor(Qt::PointingHandCursor);
    m_button->setStyleSheet(QStringLiteral("text-align: left; padding: 4px;"));
    m_field->setPlaceholderText(m_button->text());
    m_field->installEventFilter(this);
    m_stack->addWidget(m_button);
    m_stack->addWidget(m_field);
    m_stack->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_stack->setFixedHeight(m_field->sizeHint().height());
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_stack);

    connect(m_button, &QPushButton::clicked, this, &InlineAddRowView::startEditing);
    connect(m_field, &QLineEdit::returnPressed, this, &InlineAddRowView::commit);
}

bool InlineAddRowView::isEditing() const
{
    return m_stack->currentWidget() == m_field;
}

void InlineAddRowView::startEditing()
{
    m_stack->setCurrentWidget(m_field);
    m_field->setFocus(Qt::OtherFocusReason);
}

void InlineAddRowView::commit()
{
    const QString text = m_field->text();
    if (Text::isBlank(text))
        return;
    m_waiting.append(text);
    m_field->clear();
    handOverNext();
}

void InlineAddRowView::handOverNext()
{
    // One at a time, so the entries are stored in the order they were typed.
    if (m_isAdding || m_waiting.isEmpty())
        return;
    m_isAdding = true;
    m_handedOver = m_waiting.takeFirst();
    Q_EMIT addRequested(m_handedOver);
}

void InlineAddRowView::finishAdding(bool added)
{
    if (!m_isAdding)
        return;
    m_isAdding = false;
    if (!added && m_field->text().isEmpty())
        m_field->setText(m_handedOver);
    m_handedOver.clear();
    handOverNext();
}

void InlineAddRowView::cancel()
{
    m_field->clear();
    m_stack->setCurrentWidget(m_button);
}

bool InlineAddRowView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_field) {
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            cancel();
            return true;
        }
        if (event->type() == QEvent::FocusOut && !m_isAdding && m_waiting.isEmpty() && m_field->text().isEmpty())
            cancel();
    }
    return QWidget::eventFilter(watched, event);
}
