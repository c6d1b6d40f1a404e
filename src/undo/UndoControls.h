#pragma once

#include <QFrame>

class QLabel;
class QMenu;
class QMenuBar;
class QPushButton;
class QTimer;
class UndoHistory;

namespace UndoControls {
// Adds the Edit menu: Undo (Ctrl+Z) and Redo (Ctrl+Shift+Z), each naming what it would take back
// or do again.
QMenu* addEditMenu(QMenuBar* menuBar, UndoHistory& history);
} // namespace UndoControls

// The strip at the foot of the window that says what was just deleted, with an Undo button, and
// why an undo could not apply. It hides itself after a while.
class UndoNoticeView final : public QFrame {
    Q_OBJECT

public:
    explicit UndoNoticeView(UndoHistory& history, QWidget* parent = nullptr);

    QLabel* label() const { return m_label; }
    QPushButton* undoButton() const { return m_undoButton; }

private:
    void showNotice(const QString& text, bool offerUndo);

    UndoHistory& m_history;
    QLabel* m_label;
    QPushButton* m_undoButton;
    QTimer* m_hideTimer;
    // The history's place when the notice offered its Undo: a later change takes the offer away.
    int m_offeredAt = -1;
};
