#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QStackedWidget;

// A label that becomes a text field for renaming: double-click, F2 or startEditing(). Enter
// commits (an unchanged or blank text just closes the field), Escape restores the old text.
class InlineEditableLabel final : public QWidget {
    Q_OBJECT

public:
    explicit InlineEditableLabel(const QString& text, QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);
    void setLabelFont(const QFont& font);
    void setStruckOut(bool struckOut);
    // One line, cut short with "…" when narrower than the text, which then shows in full as the
    // tooltip (names in narrow panes); otherwise the text wraps.
    void setElided(bool elided);
    void startEditing();
    bool isEditing() const;

Q_SIGNALS:
    void committed(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void commit();
    void stopEditing();
    void showText();
    QLineEdit* field();

    QStackedWidget* m_stack;
    QLabel* m_label;
    QString m_text;
    bool m_isElided = false;
    QLineEdit* m_field = nullptr;
};
