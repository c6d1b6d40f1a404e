#pragma once

#include "search/SearchIndex.h"

#include <QFrame>

class QLabel;
class QLineEdit;
class QListWidget;
class SearchSource;

// Search over everything the user has: a line to type in and the results under it as they are
// typed, grouped by kind under a header each. Up and Down move between results, Enter opens one,
// Escape closes. It floats over the window that opens it.
class SearchPopupView final : public QFrame {
    Q_OBJECT

public:
    // Each row's result, as a SearchItem, in this role of its list item; headers have none.
    static constexpr int itemRole = Qt::UserRole + 1;

    SearchPopupView(SearchSource& source, QWidget* window);

    // Shows it over the window with the line empty and focused, and reads everything again.
    void open();

    QLineEdit* line() const { return m_line; }
    QListWidget* results() const { return m_results; }
    // The result the keyboard is on; empty without one.
    std::optional<SearchItem> currentItem() const;

Q_SIGNALS:
    void itemActivated(const SearchItem& item);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // keepChoice: the result chosen stays chosen if it is still there.
    void runQuery(bool keepChoice);
    void moveCurrent(int step);
    void activateCurrent();
    void place();

    SearchSource& m_source;
    QLineEdit* m_line;
    QLabel* m_status;
    QListWidget* m_results;
};

Q_DECLARE_METATYPE(SearchItem)
