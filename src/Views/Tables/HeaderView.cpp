#include "Tables/HeaderView.h"
#include "Components/FocusRing.h"
#include "Components/Fonts.h"
#include "Components/Hairline.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include "Tables/HeaderAccessible.h"
#include "Tables/HeaderRole.h"
#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quillane {

namespace {
constexpr int kFirstInset = 16; // and behind a figure that is the last
constexpr int kInset = 8;
constexpr int kTick = 16;
constexpr int kChevron = 10;
constexpr int kChevronGap = 5;
constexpr int kRingInset = 3;
constexpr double kRingRadius = 5;
} // namespace

HeaderView::HeaderView(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent) {
    HeaderAccessible::install(); // first, as whoever asks before is given another one for good
    setHighlightSections(false);
    setStretchLastSection(false);
    setMinimumSectionSize(40);
    Fonts::follow(this, [this] { setFixedHeight(sizeHint().height()); });
    setAccessibleName(QStringLiteral("Column headers"));
}

int HeaderView::insetBehind(const QHeaderView& header, int logicalIndex) {
    int last = header.count() - 1;
    while (last >= 0 && header.isSectionHidden(header.logicalIndex(last))) {
        --last;
    }
    return header.visualIndex(logicalIndex) == last ? kFirstInset : kInset;
}

QSize HeaderView::sizeHint() const {
    return {QHeaderView::sizeHint().width(), Fonts::rowHeight(kHeight, 11.5) + kBlank};
}

void HeaderView::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    const Tokens& tokens = Tokens::current();
    const bool sorted = isSortIndicatorShown() && sortIndicatorSection() == logicalIndex;
    const bool first = visualIndex(logicalIndex) == 0;
    const int side = model()->headerData(logicalIndex, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
    const bool right = (side & Qt::AlignRight) != 0;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setFont(Fonts::of(11.5, sorted ? QFont::DemiBold : QFont::Medium));
    painter->setPen(sorted ? tokens.text : tokens.text2);
    const QRectF cell = QRectF(rect).adjusted(first ? kFirstInset : kInset, 0,
                                              right ? -insetBehind(*this, logicalIndex) : -kInset, -kBlank);
    const double room = cell.width() - (sorted ? kChevron + kChevronGap : 0);
    const QFontMetricsF metrics(painter->font());
    const QString title = model()->headerData(logicalIndex, Qt::Horizontal).toString();
    const QString text = metrics.elidedText(title, Qt::ElideRight, room + 1);
    painter->drawText(cell, static_cast<int>(Qt::AlignVCenter | (right ? Qt::AlignRight : Qt::AlignLeft)),
                      text);
    if (sorted) {
        const double width = metrics.horizontalAdvance(text);
        const double x =
            right ? cell.right() - width - kChevronGap - kChevron : cell.left() + width + kChevronGap;
        const bool down = sortIndicatorOrder() == Qt::DescendingOrder;
        Symbols::draw(*painter, {std::round(x), std::round(cell.center().y() - kChevron / 2.0)}, kChevron,
                      down ? QStringLiteral("chevron.down") : QStringLiteral("chevron.up"), tokens.text);
    }
    if (!first) {
        const int top = (rect.height() - kBlank - kTick) / 2;
        Hairline::fill(*painter, QRect(rect.left(), rect.top() + top, 1, kTick), tokens.line);
    }
    if (logicalIndex == m_focusedColumn && FocusRing::isShownFor(this)) {
        const QRectF ring =
            QRectF(rect).adjusted(kRingInset, kRingInset, -kRingInset, -kBlank - 1 - kRingInset);
        FocusRing::drawInside(*painter, ring, kRingRadius);
    }
    painter->restore();
}

void HeaderView::paintGround(const QRect& rect) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(viewport());
    painter.fillRect(rect, tokens.base);
    Hairline::fill(painter, QRect(rect.left(), height() - kBlank - 1, rect.width(), 1), tokens.line);
}

void HeaderView::paintEvent(QPaintEvent* event) {
    paintGround(viewport()->rect());
    QHeaderView::paintEvent(event);
    const int end =
        length() - offset(); // the base gives what lies behind the last column a ground of its own
    paintGround(viewport()->rect().adjusted(end, 0, 0, 0));
}

std::vector<int> HeaderView::shownColumns() const {
    std::vector<int> columns;
    for (int visual = 0; visual < count(); ++visual) {
        if (const int column = logicalIndex(visual); !isSectionHidden(column)) {
            columns.push_back(column);
        }
    }
    return columns;
}

// Begins with the sorted column; later with the one that was left.
void HeaderView::focusInEvent(QFocusEvent* event) {
    QHeaderView::focusInEvent(event);
    const auto columns = shownColumns();
    const auto isShown = [&](int column) { return std::ranges::find(columns, column) != columns.end(); };
    if (!isShown(m_focusedColumn) && !columns.empty()) {
        m_focusedColumn = isShown(sortIndicatorSection()) ? sortIndicatorSection() : columns.front();
    }
}

void HeaderView::focusColumn(int logicalIndex) {
    m_focusedColumn = logicalIndex;
    viewport()->update();
    QAccessibleEvent name(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&name);
}

void HeaderView::stepBy(int columns) {
    const auto shown = shownColumns();
    const auto at = std::ranges::find(shown, m_focusedColumn) - shown.begin();
    const auto last = static_cast<std::ptrdiff_t>(shown.size()) - 1;
    if (last >= 0) {
        focusColumn(shown[static_cast<std::size_t>(std::clamp(at + columns, std::ptrdiff_t{0}, last))]);
    }
}

Qt::SortOrder HeaderView::orderAfterClick(int logicalIndex) const {
    if (logicalIndex == sortIndicatorSection()) {
        return sortIndicatorOrder() == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    }
    const QVariant first = model()->headerData(logicalIndex, Qt::Horizontal, Qt::InitialSortOrderRole);
    return static_cast<Qt::SortOrder>(first.toInt());
}

bool HeaderView::isSortable(int logicalIndex) const {
    const QVariant sortable = model()->headerData(logicalIndex, Qt::Horizontal, kSortableRole);
    return !sortable.isValid() || sortable.toBool();
}

void HeaderView::sortByFocusedColumn() {
    const int column = focusedColumn();
    if (column < 0 || column >= count() || !isSortable(column)) {
        return;
    }
    setSortIndicator(column, orderAfterClick(column));
    QAccessibleEvent description(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&description);
}

// A press that the base does not see sorts nothing when it is let go.
void HeaderView::mousePressEvent(QMouseEvent* event) {
    if (isSortable(logicalIndexAt(event->position().toPoint()))) {
        QHeaderView::mousePressEvent(event);
    }
}

void HeaderView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (isSortable(logicalIndexAt(event->position().toPoint()))) {
        QHeaderView::mouseDoubleClickEvent(event);
    }
}

void HeaderView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
        return stepBy(-1);
    case Qt::Key_Right:
        return stepBy(1);
    case Qt::Key_Home:
        return stepBy(-count());
    case Qt::Key_End:
        return stepBy(count());
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat()) {
            sortByFocusedColumn();
        }
        return;
    case Qt::Key_Down:
        return parentWidget()->setFocus(Qt::TabFocusReason);
    case Qt::Key_Up:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return; // else they would move the cursor of the rows, unseen
    default:
        event->ignore();
    }
}

} // namespace quillane
