#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;
class QStackedWidget;

// "+ Add ..." that turns into a text field in place. Enter adds (blank text is ignored), Escape
// or leaving the field empty cancels. While the owner works on an add, the field stays disabled
// until finishAdding(); on success it clears and stays open for the next entry.
class InlineAddRowView final : public QWidget {
    Q_OBJECT

public:
    // name identifies the row (its object name is "inlineAdd:" + name); text is what it offers.
    InlineAddRowView(const QString& name, const QString& text, QWidget* parent = nullptr);

    void startEditing();
    void finishAdding(bool added);
    bool isEditing() const;
    bool isAdding() const { return m_isAdding; }

Q_SIGNALS:
    void addRequested(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void commit();
    void cancel();

    QStackedWidget* m_stack;
    QPushButton* m_button;
    QLineEdit* m_field;
    bool m_isAdding = false;
};
