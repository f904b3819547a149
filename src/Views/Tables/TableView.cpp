#include "Tables/TableView.h"
#include "Components/FocusRing.h"
#include "Components/Fonts.h"
#include "Components/Look.h"
#include "Components/Spinner.h"
#include "Components/Tokens.h"
#include "Tables/HeaderView.h"
#include "Tables/TableDelegate.h"
#include "Tables/TableRole.h"
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScopedValueRollback>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>

namespace quillane {

namespace {
constexpr double kBarRadius = 6;

bool changesRow(int key) {
    return FocusRing::movesCursor(key) && key != Qt::Key_Left && key != Qt::Key_Right;
}

bool goesToTheEnd(int key) {
    return key == Qt::Key_Up || key == Qt::Key_PageUp || key == Qt::Key_End;
}
} // namespace

TableView::TableView(const QString& name, QWidget* parent)
    : QTreeView(parent)
    , m_header(new HeaderView(this))
    , m_delegate(new TableDelegate(this)) {
    setAccessibleName(name);
    setHeader(m_header); // takes clicks and sort mark from the header while sorting is off
    m_header->setSectionsClickable(true);
    m_header->setSortIndicatorShown(true);
    setItemDelegate(m_delegate);
    setFrameShape(QFrame::NoFrame);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_header, &QHeaderView::sectionResized, this,
            [this](int column, int, int newWidth) { sectionDragged(column, newWidth); });
    connect(this, &QWidget::customContextMenuRequested, this, &TableView::wantMenuAtPointer);
    Fonts::follow(this, [this] { layOutColumns(); });
}

TableView::~TableView() = default;

void TableView::setModel(QAbstractItemModel* model) {
    for (const QMetaObject::Connection& connection : m_modelConnections) {
        disconnect(connection);
    }
    m_modelConnections.clear();
    QTreeView::setModel(model);
    if (model != nullptr) {
        const auto changed = [this] { updateEmptyState(); };
        m_modelConnections = {
            connect(model, &QAbstractItemModel::rowsInserted, this, changed),
            connect(model, &QAbstractItemModel::rowsRemoved, this, changed),
            connect(model, &QAbstractItemModel::modelReset, this, changed),
        };
    }
    setColumns(std::move(m_columns));
    updateEmptyState();
}

void TableView::setColumns(std::vector<TableColumn> columns) {
    m_columns = std::move(columns);
    const int known = std::min(static_cast<int>(m_columns.size()), m_header->count());
    for (int i = 0; i < known; ++i) {
        const bool fixed = m_columns[static_cast<std::size_t>(i)].stretches;
        m_header->setSectionResizeMode(i, fixed ? QHeaderView::Fixed : QHeaderView::Interactive);
    }
    layOutColumns();
}

// A figure that is cut misleads, above all a size without its unit, so what stands at the right grows with the text.
double TableView::growth(int column) const {
    const int side = model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
    return (side & Qt::AlignRight) != 0 ? std::max(1.0, Fonts::scale()) : 1;
}

void TableView::layOutColumns() {
    const int known = std::min(static_cast<int>(m_columns.size()), m_header->count());
    if (known == 0 || viewport()->width() <= 0) {
        return;
    }
    const QScopedValueRollback<bool> guard(m_layingOut, true);
    std::vector<TableColumn> columns = m_columns;
    for (int i = 0; i < known; ++i) {
        TableColumn& column = columns[static_cast<std::size_t>(i)];
        column.width = static_cast<int>(std::lround(column.width * growth(i)));
    }
    const std::vector<int> widths = columnWidths(columns, viewport()->width());
    for (int i = 0; i < known; ++i) {
        m_header->resizeSection(i, widths[static_cast<std::size_t>(i)]);
    }
}

void TableView::sectionDragged(int column, int newWidth) {
    if (m_layingOut || column >= static_cast<int>(m_columns.size())) {
        return;
    }
    m_columns[static_cast<std::size_t>(column)].width =
        static_cast<int>(std::lround(newWidth / growth(column)));
    layOutColumns();
}

void TableView::setEmptyState(QWidget* overlay) {
    delete m_emptyState;
    m_emptyState = overlay;
    if (overlay != nullptr) {
        overlay->setParent(this);
    }
    updateEmptyState();
}

void TableView::updateEmptyState() {
    if (m_emptyState == nullptr) {
        return;
    }
    const bool empty = model() == nullptr || model()->rowCount() == 0;
    setHeaderHidden(empty);
    m_emptyState->setGeometry(rect());
    m_emptyState->setVisible(empty);
    if (empty) {
        m_emptyState->raise();
    }
}

void TableView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    layOutColumns();
    if (m_emptyState != nullptr) {
        m_emptyState->setGeometry(rect());
    }
}

bool TableView::showsActiveSelection() const {
    return hasFocus();
}

QRectF TableView::barOf(const QRect& row) const {
    return {kInset, static_cast<double>(row.top()), viewport()->width() - 2.0 * kInset,
            static_cast<double>(row.height())};
}

void TableView::drawBar(QPainter& painter, const QRect& row, const QModelIndex& index, bool selected) const {
    const Tokens& tokens = Tokens::current();
    const QRectF bar = barOf(row);
    painter.setPen(Qt::NoPen);
    if (!selected) {
        if (index.row() % 2 == 1) {
            painter.setBrush(tokens.alt);
            painter.drawRoundedRect(bar, kBarRadius, kBarRadius);
        }
        return;
    }
    const auto isSelected = [&](int other) {
        const QModelIndex neighbour = index.sibling(other, 0);
        return neighbour.isValid() && selectionModel()->isSelected(neighbour);
    };
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(bar, kBarRadius, kBarRadius);
    if (isSelected(index.row() - 1)) {
        path.addRect(bar.adjusted(0, 0, 0, -bar.height() / 2));
    }
    if (isSelected(index.row() + 1)) {
        path.addRect(bar.adjusted(0, bar.height() / 2, 0, 0));
    }
    painter.setBrush(showsActiveSelection() ? tokens.sel : tokens.selIdle);
    painter.drawPath(path.simplified());
}

// A selected row shows that the cursor is there, unless the cursor walks among selected rows.
void TableView::drawCursor(QPainter& painter, const QRect& row, bool selected) const {
    if (!FocusRing::isShownFor(this)) {
        return;
    }
    if (!selected) {
        FocusRing::drawInside(painter, barOf(row), kBarRadius);
    } else if (m_cursorRoams) {
        FocusRing::drawOnSelection(painter, barOf(row), kBarRadius);
    }
}

void TableView::drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                        const QModelIndex& index) const {
    const bool selected = selectionModel()->isSelected(index.siblingAtColumn(0));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    drawBar(*painter, options.rect, index, selected);
    if (currentIndex().row() == index.row()) {
        drawCursor(*painter, options.rect, selected);
    }
    painter->restore();
    for (int visual = 0; visual < m_header->count(); ++visual) {
        const int column = m_header->logicalIndex(visual);
        if (m_header->isSectionHidden(column)) {
            continue;
        }
        QStyleOptionViewItem cell = options;
        cell.rect = QRect(m_header->sectionViewportPosition(column), options.rect.top(),
                          m_header->sectionSize(column), options.rect.height());
        cell.state.setFlag(QStyle::State_Selected, selected);
        cell.state.setFlag(QStyle::State_Active, showsActiveSelection());
        const QModelIndex sibling = index.siblingAtColumn(column);
        if (sibling.data(kBusyRole).toBool()) {
            m_busyRegion += cell.rect;
        }
        m_delegate->paint(painter, cell, sibling);
    }
}

void TableView::drawBranches(QPainter*, const QRect&, const QModelIndex&) const {}

QModelIndex TableView::indexAt(const QPoint& point) const {
    const int end = m_header->length() - m_header->offset();
    return QTreeView::indexAt(point.x() < end ? point : QPoint(end - 1, point.y()));
}

// What a change of the selection repaints: whole bars, not only the columns, and those of the neighbours, as
// they round or join their corners.
QRegion TableView::visualRegionForSelection(const QItemSelection& selection) const {
    QRegion region;
    for (const QItemSelectionRange& range : selection) {
        if (!range.isValid()) {
            continue;
        }
        const int last = std::min(range.bottom() + 1, model()->rowCount() - 1);
        const int top = visualRect(model()->index(std::max(range.top() - 1, 0), 0)).top();
        const int bottom = visualRect(model()->index(last, 0)).bottom();
        region += QRect(0, top, viewport()->width(), bottom - top + 1) & viewport()->rect();
    }
    return region;
}

void TableView::paintEvent(QPaintEvent* event) {
    m_busyRegion -= event->region();
    QTreeView::paintEvent(event);
    if (m_busyRegion.isEmpty() || Look::reducedMotion()) {
        m_spinnerTimer.stop();
    } else if (!m_spinnerTimer.isActive()) {
        m_spinnerTimer.start(Spinner::kStepMilliseconds, this);
    }
}

void TableView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_spinnerTimer.timerId()) {
        QTreeView::timerEvent(event);
        return;
    }
    if (!isVisible()) {
        m_spinnerTimer.stop(); // the next paint starts it again
        return;
    }
    m_spinnerStep = (m_spinnerStep + 1) % Spinner::kSteps;
    viewport()->update(m_busyRegion);
}

// The base searches the column of the current cell, which a click may have put anywhere.
void TableView::keyboardSearch(const QString& search) {
    if (model() == nullptr || model()->rowCount() == 0) {
        return;
    }
    const int current = currentIndex().isValid() ? currentIndex().row() : -1;
    const QModelIndex hit = m_typeAhead.type(search, *model(), m_typeAheadColumn, current);
    if (hit.isValid()) {
        setRoaming(false);
        setCurrentIndex(hit.siblingAtColumn(0));
    }
}

bool TableView::event(QEvent* event) {
    if (event->type() == QEvent::ContextMenu &&
        static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard) {
        wantMenuByKey();
        event->accept();
        return true;
    }
    return QTreeView::event(event);
}

void TableView::wantMenuAtPointer(const QPoint& position) {
    const QModelIndex index = indexAt(position);
    emit menuWanted(index.isValid() && selectionModel()->isSelected(index.siblingAtColumn(0)),
                    viewport()->mapToGlobal(position));
}

// Beside the current row where it can be seen, else in the upper left corner of the rows.
void TableView::wantMenuByKey() {
    const QRect row = visualRect(currentIndex().siblingAtColumn(0));
    const bool isSeen = row.isValid() && viewport()->rect().intersects(row);
    const QPoint beside = isSeen ? QPoint(row.left() + kRowHeight, row.bottom()) : QPoint(kRowHeight, 0);
    emit menuWanted(selectionModel() != nullptr && selectionModel()->hasSelection(),
                    viewport()->mapToGlobal(beside));
}

void TableView::keyPressEvent(QKeyEvent* event) {
    // Not every platform makes a request of these keys.
    if (event->key() == Qt::Key_Menu ||
        (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)) {
        wantMenuByKey();
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier) {
        pressSpace(event);
    } else if (changesRow(event->key())) {
        moveCursorBy(event);
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void TableView::pressSpace(QKeyEvent* event) {
    if (m_typeAhead.isGoingOn()) {
        keyboardSearch(QStringLiteral(" "));
    } else if (selectionModel() != nullptr && selectionModel()->hasSelection() && !m_cursorRoams) {
        if (!event->isAutoRepeat()) {
            emit spacePressed();
        }
    } else if (currentIndex().isValid()) {
        QTreeView::keyPressEvent(event); // selects the row, and that is all
    }
    event->accept();
}

// With nothing selected there is nowhere to go from, unless the cursor was led somewhere: then an arrow takes
// the row at its end of the table.
void TableView::moveCursorBy(QKeyEvent* event) {
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool roams = modifiers & Qt::ControlModifier;
    const int rows = model() != nullptr ? model()->rowCount() : 0;
    if (!roams && !m_cursorRoams && rows > 0 && !selectionModel()->hasSelection()) {
        selectRow(goesToTheEnd(event->key()) ? rows - 1 : 0);
        event->accept();
        return;
    }
    const QModelIndex before = currentIndex();
    QTreeView::keyPressEvent(event);
    // The base leaves the selection alone when there is nowhere further to go.
    if (modifiers == Qt::NoModifier && currentIndex() == before && before.isValid()) {
        selectRow(before.row());
    }
    setRoaming(roams);
}

void TableView::selectRow(int row) {
    selectionModel()->setCurrentIndex(model()->index(row, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TableView::setRoaming(bool roams) {
    if (m_cursorRoams != roams) {
        m_cursorRoams = roams;
        viewport()->update();
    }
}

void TableView::mousePressEvent(QMouseEvent* event) {
    setRoaming(false);
    QTreeView::mousePressEvent(event);
}

// The header asks here too. It is no stop of its own, as whoever comes from before the table wants the rows;
// and the step back from it starts at the rows, in whose place the window's order has the table.
bool TableView::focusNextPrevChild(bool next) {
    if (m_header->hasFocus()) {
        setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return next || QTreeView::focusNextPrevChild(false);
    }
    if (!next && m_header->isVisible()) {
        m_header->setFocus(Qt::BacktabFocusReason);
        return true;
    }
    return QTreeView::focusNextPrevChild(next);
}

} // namespace quillane
