#include "undo/UndoControls.h"

#include "undo/UndoHistory.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QUndoStack>

QMenu* UndoControls::addEditMenu(QMenuBar* menuBar, UndoHistory& history)
{
    //% "&Edit"
    QMenu* edit = menuBar->addMenu(qtTrId("menu-edit"));
    QAction* undo = edit->addAction(UndoText::undoAction({}), &history, &UndoHistory::undo);
    undo->setObjectName(QStringLiteral("undoAction"));
    undo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    QAction* redo = edit->addAction(UndoText::redoAction({}), &history, &UndoHistory::redo);
    redo->setObjectName(QStringLiteral("redoAction"));
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    const auto update = [undo, redo, &history] {
        undo->setText(UndoText::undoAction(history.undoText()));
        undo->setEnabled(history.canUndo());
        redo->setText(UndoText::redoAction(history.redoText()));
        redo->setEnabled(history.canRedo());
    };
    QObject::connect(&history, &UndoHistory::changed, edit, update);
    update();
    return edit;
}

UndoNoticeView::UndoNoticeView(UndoHistory& history, QWidget* parent)
    : QFrame(parent)
    , m_history(history)
    , m_label(new QLabel(this))
    , m_undoButton(new QPushButton(this))
    , m_hideTimer(new QTimer(this))
{
    setObjectName(QStringLiteral("undoNotice"));
    setFrameShape(QFrame::StyledPanel);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 4, 12, 4);
    m_label->setObjectName(QStringLiteral("undoNoticeLabel"));
    m_label->setWordWrap(true);
    layout->addWidget(m_label, 1);
    m_undoButton->setObjectName(QStringLiteral("undoNoticeButton"));
    m_undoButton->setText(qtTrId("undo-notice-undo"));
    layout->addWidget(m_undoButton);
    m_hideTimer->setSingleShot(true);
    m_hideTimer->setInterval(10000);
    connect(m_hideTimer, &QTimer::timeout, this, &QWidget::hide);
    connect(m_undoButton, &QPushButton::clicked, this, [this] {
        if (m_history.stack()->index() == m_offeredAt)
            m_history.undo();
        hide();
    });
    connect(
        &m_history, &UndoHistory::deleteRecorded, this, [this](const QString& notice) { showNotice(notice, true); });
    connect(&m_history, &UndoHistory::finished, this, [this](bool, const QString& message) {
        if (!message.isEmpty())
            showNotice(message, false);
    });
    connect(m_history.stack(), &QUndoStack::indexChanged, this, [this](int index) {
        if (m_undoButton->isVisible() && index != m_offeredAt)
            hide();
    });
    hide();
}

void UndoNoticeView::showNotice(const QString& text, bool offerUndo)
{
    m_label->setText(text);
    m_offeredAt = offerUndo ? m_history.stack()->index() : -1;
    m_undoButton->setVisible(offerUndo);
    QFrame::show();
    m_hideTimer->start();
}
