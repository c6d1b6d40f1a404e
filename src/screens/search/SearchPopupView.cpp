#include "screens/search/SearchPopupView.h"

#include "screens/search/SearchSource.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QVBoxLayout>

namespace {

constexpr int shownPerKind = 8;
// The text shown of a long logbook entry around what matched.
constexpr int snippetLead = 40;
constexpr int snippetLength = 140;
// Rich text of a result row, in this role.
constexpr int htmlRole = Qt::UserRole + 2;

QString kindTitle(SearchKind kind)
{
    switch (kind) {
    case SearchKind::project:
        //% "Projects"
        return qtTrId("search-group-projects");
    case SearchKind::taskList:
        //% "Lists"
        return qtTrId("search-group-lists");
    case SearchKind::task:
        //% "Tasks"
        return qtTrId("search-group-tasks");
    case SearchKind::dailyTask:
        //% "Daily tasks"
        return qtTrId("search-group-daily-tasks");
    case SearchKind::logbook:
        //% "Logbook"
        return qtTrId("search-group-logbook");
    case SearchKind::meet:
        //% "Meets"
        return qtTrId("search-group-meets");
    }
    return {};
}

// The text with the highlights in bold, cut to a window around the first one when it is long;
// line breaks read as spaces.
QString highlightedHtml(const QString& text, const QList<SearchHighlight>& highlights)
{
    int from = 0;
    int to = int(text.size());
    if (text.size() > snippetLength) {
        const int first = highlights.isEmpty() ? 0 : highlights.constFirst().start;
        from = std::max(0, first - snippetLead);
        while (from > 0 && from < first && !text.at(from - 1).isSpace())
            ++from;
        to = std::min(int(text.size()), from + snippetLength);
    }
    QString html;
    if (from > 0)
        html += QStringLiteral("…");
    int at = from;
    for (const SearchHighlight& piece : highlights) {
        const int start = std::max(piece.start, at);
        const int end = std::min(piece.start + piece.length, to);
        if (end <= start)
            continue;
        html += text.mid(at, start - at).toHtmlEscaped();
        html += QStringLiteral("<b>") + text.mid(start, end - start).toHtmlEscaped() + QStringLiteral("</b>");
        at = end;
    }
    html += text.mid(at, to - at).toHtmlEscaped();
    if (to < text.size())
        html += QStringLiteral("…");
    html.replace(u'\n', u' ');
    return html;
}

// Draws a result's rich text: the match in bold, where it lives in a smaller grey line.
class ResultDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QString html = index.data(htmlRole).toString();
        if (html.isEmpty()) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        QStyleOptionViewItem plain = option;
        initStyleOption(&plain, index);
        plain.text.clear();
        const QWidget* widget = option.widget;
        QStyle* style = widget ? widget->style() : QApplication::style();
        style->drawControl(QStyle::CE_ItemViewItem, &plain, painter, widget);
        QTextDocument document;
        document.setDocumentMargin(2);
        document.setDefaultFont(option.font);
        document.setHtml(html);
        document.setTextWidth(option.rect.width() - 12);
        painter->save();
        painter->translate(option.rect.topLeft() + QPoint(10, 1));
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette = option.palette;
        if (option.state & QStyle::State_Selected)
            context.palette.setColor(QPalette::Text, option.palette.color(QPalette::HighlightedText));
        document.documentLayout()->draw(painter, context);
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QSize base = QStyledItemDelegate::sizeHint(option, index);
        if (index.data(htmlRole).toString().isEmpty())
            return base;
        return {base.width(), 2 * option.fontMetrics.height() + 10};
    }
};

} // namespace

SearchPopupView::SearchPopupView(SearchSource& source, QWidget* window)
    : QFrame(window, Qt::Popup)
    , m_source(source)
    , m_line(new QLineEdit(this))
    , m_status(new QLabel(this))
    , m_results(new QListWidget(this))
{
    setObjectName(QStringLiteral("searchPopup"));
    setFrameShape(QFrame::StyledPanel);
    m_line->setObjectName(QStringLiteral("searchLine"));
    //% "Search projects, tasks, logbook, meets…"
    m_line->setPlaceholderText(qtTrId("search-placeholder"));
    m_line->setClearButtonEnabled(true);
    m_line->installEventFilter(this);
    m_status->setObjectName(QStringLiteral("searchStatus"));
    m_status->setEnabled(false);
    m_status->setContentsMargins(8, 4, 8, 4);
    m_results->setObjectName(QStringLiteral("searchResults"));
    m_results->setFrameShape(QFrame::NoFrame);
    m_results->setFocusPolicy(Qt::NoFocus);
    m_results->setItemDelegate(new ResultDelegate(m_results));
    m_results->setUniformItemSizes(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_line);
    layout->addWidget(m_status);
    layout->addWidget(m_results, 1);
    connect(m_line, &QLineEdit::textChanged, this, [this] { runQuery(false); });
    connect(m_results, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        if (item->data(itemRole).isValid()) {
            m_results->setCurrentItem(item);
            activateCurrent();
        }
    });
    connect(&m_source, &SearchSource::loaded, this, [this] { runQuery(true); });
}

void SearchPopupView::open()
{
    m_line->clear();
    m_source.refresh();
    runQuery(false);
    place();
    // A popup takes the keyboard without becoming the active window, so the window has its
    // focus back as it was when the popup closes.
    show();
    raise();
    m_line->setFocus(Qt::PopupFocusReason);
}

void SearchPopupView::place()
{
    QWidget* window = parentWidget();
    const int width = std::min(640, std::max(360, window->width() - 80));
    const int height = std::min(480, std::max(240, window->height() - 120));
    const QPoint topLeft = window->mapToGlobal(QPoint((window->width() - width) / 2, 60));
    setGeometry(QRect(topLeft, QSize(width, height)));
}

std::optional<SearchItem> SearchPopupView::currentItem() const
{
    const QListWidgetItem* current = m_results->currentItem();
    if (!current || !current->data(itemRole).isValid())
        return std::nullopt;
    return current->data(itemRole).value<SearchItem>();
}

void SearchPopupView::runQuery(bool keepChoice)
{
    // A new index arriving while the user moves through the results keeps the one chosen.
    const std::optional<SearchItem> chosen = keepChoice ? currentItem() : std::nullopt;
    m_results->clear();
    const QString query = m_line->text();
    const std::shared_ptr<SearchIndex> index = m_source.index();
    if (query.trimmed().isEmpty()) {
        //% "Loading…"
        //% "Type to search"
        m_status->setText(
            m_source.isLoading() && index->items().isEmpty() ? qtTrId("search-loading") : qtTrId("search-hint"));
        m_status->show();
        return;
    }
    const SearchResults found = index->query(query, shownPerKind);
    QFont headerFont = m_results->font();
    headerFont.setBold(true);
    headerFont.setPointSizeF(headerFont.pointSizeF() * 0.9);
    for (const SearchKind kind : allSearchKinds) {
        const QList<SearchResult>& group = found.groups[int(kind)];
        if (group.isEmpty())
            continue;
        const int total = found.totals[int(kind)];
        auto* header = new QListWidgetItem(
            total > group.size() ? QStringLiteral("%1 (%2)").arg(kindTitle(kind)).arg(total) : kindTitle(kind),
            m_results);
        header->setFlags(Qt::NoItemFlags);
        header->setFont(headerFont);
        header->setForeground(palette().color(QPalette::PlaceholderText));
        for (const SearchResult& result : group) {
            const SearchItem& item = index->item(result.itemIndex);
            auto* row = new QListWidgetItem(item.text.simplified().left(snippetLength), m_results);
            row->setData(itemRole, QVariant::fromValue(item));
            QString html = highlightedHtml(item.text, result.highlights);
            if (!item.context.isEmpty()) {
                html += QStringLiteral("<br><small><span style=\"color:%1\">%2</span></small>")
                            .arg(palette().color(QPalette::PlaceholderText).name(), item.context.toHtmlEscaped());
            }
            row->setData(htmlRole, html);
            row->setToolTip(item.context);
        }
    }
    if (m_results->count() == 0) {
        //% "Loading…"
        //% "Nothing found"
        m_status->setText(m_source.isLoading() && index->items().isEmpty() ? qtTrId("search-loading")
                                                                           : qtTrId("search-nothing-found"));
        m_status->show();
        return;
    }
    m_status->hide();
    if (chosen) {
        for (int row = 0; row < m_results->count(); ++row) {
            const QVariant data = m_results->item(row)->data(itemRole);
            if (!data.isValid())
                continue;
            const SearchItem item = data.value<SearchItem>();
            if (item.kind == chosen->kind && item.itemId == chosen->itemId && item.projectId == chosen->projectId
                && item.taskListId == chosen->taskListId && item.text == chosen->text) {
                m_results->setCurrentRow(row);
                return;
            }
        }
    }
    moveCurrent(1);
}

void SearchPopupView::moveCurrent(int step)
{
    const int count = m_results->count();
    int row = m_results->currentRow();
    for (int tried = 0; tried < count; ++tried) {
        row += step;
        if (row < 0 || row >= count)
            return;
        if (m_results->item(row)->data(itemRole).isValid()) {
            m_results->setCurrentRow(row);
            m_results->scrollToItem(m_results->item(row));
            // The header of the first group stays in view above its first result.
            if (row == 1)
                m_results->scrollToTop();
            return;
        }
    }
}

void SearchPopupView::activateCurrent()
{
    const std::optional<SearchItem> item = currentItem();
    if (!item)
        return;
    hide();
    Q_EMIT itemActivated(*item);
}

bool SearchPopupView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_line && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        switch (key->key()) {
        case Qt::Key_Down:
            moveCurrent(1);
            return true;
        case Qt::Key_Up:
            moveCurrent(-1);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            activateCurrent();
            return true;
        case Qt::Key_Escape:
            hide();
            return true;
        default:
            break;
        }
    }
    return QFrame::eventFilter(watched, event);
}
