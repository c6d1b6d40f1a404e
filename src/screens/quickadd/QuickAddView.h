#pragma once

#include "quickadd/QuickAddParser.h"
#include "rituals/QuickAdd.h"

#include <QDialog>
#include <QUuid>

class AppServices;
class QAbstractItemView;
class QCompleter;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QStringListModel;

// One line to add a task from anywhere: as the user types, the phrases it recognises (a day, a
// time, a rule, #Project, /List, !1..!4, a reminder) show as chips under the line; taking a chip
// back (its ×, or Backspace at the start of the line) leaves its words in the title. #Project and
// /List complete from the user's projects and lists. Enter saves through the Tasks use cases and
// closes; when the task cannot be added the line stays, with what was typed and why. Escape
// closes without adding.
class QuickAddView final : public QDialog {
    Q_OBJECT

public:
    explicit QuickAddView(const AppServices& services, QWidget* parent = nullptr);

    // What the workspace has open, where a line that names no project or list goes (see
    // QuickAdd::add); nulls for the user's first project.
    void setOpenPlace(const QuickAdd::OpenPlace& open);
    // The user's projects and lists were read (for chips and completion).
    bool isReady() const { return m_ready; }
    bool isSaving() const { return m_saving; }
    const QuickAddParser::Fields& fields() const { return m_fields; }
    // The completion list of #Project and /List (a window of its own).
    QAbstractItemView* completions() const;

Q_SIGNALS:
    // The task was stored; notice says where.
    void added(const QString& notice);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void reparse();
    void showChips();
    void takeBack(const QuickAddParser::Phrase& phrase);
    void save();
    void offerCompletion();
    void complete(const QString& name);
    // Where the #word or /word under the cursor starts, or -1.
    int completionStart() const;

    const AppServices& m_services;
    QLineEdit* m_field;
    QWidget* m_chips;
    QHBoxLayout* m_chipsLayout;
    QLabel* m_message;
    QCompleter* m_completer;
    QStringListModel* m_completions;
    QuickAdd::Catalogue m_catalogue;
    QList<QuickAddParser::ProjectNames> m_names;
    QList<QuickAddParser::Phrase> m_dismissed;
    QuickAddParser::Fields m_fields;
    QuickAdd::OpenPlace m_open;
    bool m_ready = false;
    bool m_saving = false;
};
