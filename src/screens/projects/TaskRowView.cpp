#include "screens/projects/TaskRowView.h"

#include "screens/common/Icons.h"
#include "screens/common/InlineEditableLabel.h"
#include "screens/common/LazyMenuButton.h"
#include "screens/projects/EisenhowerTagStyle.h"

#include <QApplication>
#include <QCheckBox>
#include <QDrag>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QToolButton>

TaskRowView::TaskRowView(const TaskEntity& task, QWidget* parent)
    : QWidget(parent)
    , m_task(task)
    , m_done(new QCheckBox(this))
    , m_title(new InlineEditableLabel(task.tasTitle, this))
    , m_tag(new LazyMenuButton(
          [this](QMenu* menu) {
              //% "Quadrant"
              menu->addSection(qtTrId("eisenhower-tag-menu-title"));
              for (const EisenhowerTagEnum tag : EisenhowerTag::allCases) {
                  menu->addAction(EisenhowerTagStyle::dot(tag), EisenhowerTagStyle::label(tag), this,
                      [this, tag] { Q_EMIT setTag(m_task, tag); });
              }
              menu->addAction(EisenhowerTagStyle::dot(std::nullopt), EisenhowerTagStyle::label(std::nullopt), this,
                  [this] { Q_EMIT setTag(m_task, std::nullopt); });
          },
          this))
{
    setObjectName(QStringLiteral("task:") + task.tasTitle);
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    m_done->setChecked(task.tasIsDone);
    m_done->setObjectName(QStringLiteral("taskDone"));
    m_title->setStruckOut(task.tasIsDone);

    m_tag->setObjectName(QStringLiteral("taskTag"));
    m_tag->setIcon(EisenhowerTagStyle::dot(task.tasEisenhowerTag));
    m_tag->setToolTip(EisenhowerTagStyle::label(task.tasEisenhowerTag));

    auto* remove = new QToolButton(this);
    remove->setObjectName(QStringLiteral("taskDelete"));
    remove->setIcon(Icons::symbol(QStringLiteral("trash")));
    remove->setAutoRaise(true);
    //% "Delete task"
    remove->setToolTip(qtTrId("tasks-delete-button"));

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(m_done);
    layout->addWidget(m_title, 1);
    if (task.tasDueDate) {
        auto* due = new QLabel(QLocale().toString(task.tasDueDate->toLocalTime().date(), QLocale::ShortFormat), this);
        due->setEnabled(false);
        layout->addWidget(due);
    }
    layout->addWidget(m_tag);
    layout->addWidget(remove);

    connect(m_done, &QCheckBox::toggled, this, [this](bool checked) { Q_EMIT toggleDone(m_task, checked); });
    connect(
        m_title, &InlineEditableLabel::committed, this, [this](const QString& title) { Q_EMIT rename(m_task, title); });
    connect(remove, &QToolButton::clicked, this, [this] { Q_EMIT deleteRequested(m_task); });
}

QSize TaskRowView::sizeHint() const
{
    QSize hint = QWidget::sizeHint();
    if (width() > 0 && layout()->hasHeightForWidth())
        hint.setHeight(std::max(hint.height(), layout()->totalHeightForWidth(width())));
    return hint;
}

void TaskRowView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    // A new width may wrap the title onto more or fewer lines.
    if (event->oldSize().width() != event->size().width())
        updateGeometry();
}

void TaskRowView::setToggling(bool toggling)
{
    m_done->setEnabled(!toggling);
}

void TaskRowView::mousePressEvent(QMouseEvent* event)
{
    m_pressPosition = event->position().toPoint();
    QWidget::mousePressEvent(event);
}

void TaskRowView::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton)
        || (event->position().toPoint() - m_pressPosition).manhattanLength() < QApplication::startDragDistance())
        return;
    auto* mime = new QMimeData;
    mime->setData(dragMimeType, m_task.tasId.toByteArray());
    auto* drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->setPixmap(grab());
    drag->exec(Qt::MoveAction);
}

void TaskRowView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete) {
        Q_EMIT deleteRequested(m_task);
        return;
    }
    if (event->key() == Qt::Key_F2) {
        m_title->startEditing();
        return;
    }
    if (event->key() == Qt::Key_Space) {
        m_done->toggle();
        return;
    }
    QWidget::keyPressEvent(event);
}
