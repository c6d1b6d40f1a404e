#pragma once

#include <QStringList>
#include <QWidget>

class QLineEdit;
class QPushButton;
class QStackedWidget;

// "+ Add ..." that turns into a text field in place. Enter hands the text to the owner and
// empties the field at once, so the next entry can be typed while the owner stores this one;
// entries typed faster than they are stored wait their turn, in order. Enter on blank text does
// nothing; Escape, or leaving the empty field with nothing waiting, closes it. The field never
// turns disabled, so the focus (and every key typed) stays in it. The owner answers each
// addRequested with finishAdding().
class InlineAddRowView final : public QWidget {
    Q_OBJECT

public:
    // name identifies the row (its object name is "inlineAdd:" + name); text is what it offers.
    InlineAddRowView(const QString& name, const QString& text, QWidget* parent = nullptr);

    void startEditing();
    // Closes the field, dropping its text.
    void cancel();
    // The store answered the last addRequested; a text that could not be added comes back into
    // an empty field, to be corrected.
    void finishAdding(bool added);
    bool isEditing() const;
    // An entry was handed over and not answered yet.
    bool isAdding() const { return m_isAdding; }
    // Entries typed and not yet handed over.
    int waitingCount() const { return int(m_waiting.size()); }

Q_SIGNALS:
    void addRequested(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void commit();
    void handOverNext();

    QStackedWidget* m_stack;
    QPushButton* m_button;
    QLineEdit* m_field;
    QStringList m_waiting;
    QString m_handedOver;
    bool m_isAdding = false;
};
