#include "screens/projects/TaskRowView.h"

#include "screens/common/Icons.h"
#include "screens/common/InlineEditableLabel.h"
#include "screens/common/LazyMenuButton.h"
#include "screens/projects/EisenhowerTagStyle.h"
#include "screens/projects/TaskDueText.h"
#include "screens/projects/TaskScheduleEditor.h"

#include <QApplication>
#include <QCheckBox>
#include <QContextMenuEvent>
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
        const TaskDueLabel label = TaskDueText::of(task, QDateTime::currentDateTime());
        auto* due = new QLabel(label.text, this);
        due->setObjectName(QStringLiteral("taskDue"));
        due->setToolTip(QLocale().toString(
            task.tasDueHasTime ? task.tasDueDate->toLocalTime() : QDateTime(*task.dueDay(), QTime(0, 0)),
            task.tasDueHasTime ? QLocale::LongFormat : QLocale::ShortFormat));
        if (label.overdue) {
            due->setProperty("overdue", true);
            QPalette palette = due->palette();
            palette.setColor(QPalette::WindowText, QColor(0xc6, 0x28, 0x28));
            due->setPalette(palette);
            //% "Overdue"
            due->setToolTip(qtTrId("tasks-due-overdue") + QStringLiteral(": ") + due->toolTip());
        } else {
            due->setEnabled(false);
        }
        layout->addWidget(due);
    }
    if (task.tasRecurrence) {
        auto* repeats = new QLabel(QStringLiteral("\u21bb"), this);
        repeats->setObjectName(QStringLiteral("taskRepeats"));
        //% "Repeats"
        repeats->setToolTip(qtTrId("tasks-repeats"));
        repeats->setEnabled(false);
        layout->addWidget(repeats);
    }
    auto* scheduleButton = new QToolButton(this);
    scheduleButton->setObjectName(QStringLiteral("taskSchedule"));
    scheduleButton->setIcon(Icons::symbol(QStringLiteral("calendar")));
    scheduleButton->setAutoRaise(true);
    //% "Due date, repetition and reminder (Ctrl+E)"
    scheduleButton->setToolTip(qtTrId("tasks-schedule-button"));
    connect(scheduleButton, &QToolButton::clicked, this, &TaskRowView::openSchedule);
    layout->addWidget(scheduleButton);
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

void TaskRowView::openSchedule()
{
    auto* editor = new TaskScheduleEditor(m_task, QDate::currentDate(), this);
    connect(editor, &TaskScheduleEditor::saved, this, &TaskRowView::schedule);
    connect(editor, &TaskScheduleEditor::skipRequested, this, &TaskRowView::skipOccurrence);
    editor->adjustSize();
    editor->move(mapToGlobal(QPoint(std::max(0, width() - editor->width()), height())));
    editor->show();
}

void TaskRowView::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    //% "Due date, repetition and reminder (Ctrl+E)"
    menu.addAction(
        Icons::symbol(QStringLiteral("calendar")), qtTrId("tasks-schedule-button"), this, &TaskRowView::openSchedule);
    if (m_task.tasRecurrence && !m_task.tasIsDone) {
        //% "Skip this time"
        menu.addAction(qtTrId("tasks-schedule-skip"), this, [this] { Q_EMIT skipOccurrence(m_task); });
    }
    menu.exec(event->globalPos());
}

void TaskRowView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_E && event->modifiers() == Qt::ControlModifier) {
        openSchedule();
        return;
    }
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
