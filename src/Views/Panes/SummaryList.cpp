#include "Panes/SummaryList.h"
#include "Components/FocusRing.h"
#include "Components/Fonts.h"
#include "Components/Hairline.h"
#include "Components/IconPixmaps.h"
#include "Components/LibraryObserver.h"
#include "Components/ShownText.h"
#include "Components/TabularText.h"
#include "Components/Tokens.h"
#include "Components/ToolTipText.h"
#include "Formatting.h"
#include "IconCache.h"
#include <QAbstractListModel>
#include <QGuiApplication>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace quillane {

namespace {

constexpr int kRowHeight = 35;
constexpr int kIconSide = 22;
constexpr int kIconGap = 9;
constexpr int kEdge = 1;     // of the card, left and right of the rows
constexpr int kPadding = 13; // between the edges of a row and what it shows
constexpr int kOverhang = 5; // of the focus ring beyond what the row shows; more would reach the scroll bar
constexpr int kOuterSpace = 10; // above the first row and below the last
constexpr int kSizeRole = Qt::UserRole;

class SummaryDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {100, Fonts::rowHeight(kRowHeight, 12.5)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const Tokens& tokens = Tokens::current();
        const QRect content = option.rect.adjusted(kPadding, 0, -kPadding, 0);
        painter->save();
        if (index.row() > 0) {
            Hairline::fill(*painter, QRect(content.left(), content.top(), content.width(), 1), tokens.line2);
        }
        QRectF rest = content;
        const auto icon = index.data(Qt::DecorationRole);
        if (icon.isValid()) {
            painter->drawPixmap(QPointF(rest.left(), rest.center().y() - kIconSide / 2.0 + 0.5),
                                icon.value<QPixmap>());
            rest.adjust(kIconSide + kIconGap, 0, 0, 0);
        }
        painter->setFont(Fonts::of(12));
        painter->setPen(tokens.text2);
        const QString size = index.data(kSizeRole).toString();
        TabularText::draw(*painter, rest, size, Qt::AlignRight);
        rest.adjust(0, 0, -TabularText::width(QFontMetricsF(painter->font()), size) - 12, 0);

        painter->setFont(Fonts::of(12.5));
        painter->setPen(tokens.text);
        painter->drawText(rest, Qt::AlignVCenter | Qt::AlignLeft,
                          QFontMetricsF(painter->font())
                              .elidedText(index.data().toString(), Qt::ElideMiddle, rest.width()));
        if ((option.state & QStyle::State_HasFocus) && FocusRing::isShownFor(option.widget)) {
            FocusRing::drawInside(*painter, content.adjusted(-kOverhang, 0, kOverhang, 0), 6);
        }
        painter->restore();
    }
};

std::vector<SummaryList::Row> largestFirst(const std::vector<SummaryList::Row>& rows) {
    std::vector<std::size_t> places(rows.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::ranges::sort(places, [&](std::size_t a, std::size_t b) {
        return rows[a].bytes != rows[b].bytes ? rows[a].bytes > rows[b].bytes : a < b;
    });
    std::vector<SummaryList::Row> ordered;
    ordered.reserve(rows.size());
    for (const auto place : places) {
        ordered.push_back(rows[place]);
    }
    return ordered;
}

} // namespace

class SummaryListModel : public QAbstractListModel {
  public:
    using QAbstractListModel::QAbstractListModel;

    bool setRows(const std::vector<SummaryList::Row>& given) {
        std::vector<SummaryList::Row> rows = largestFirst(given);
        if (rows == m_rows) {
            return false;
        }
        beginResetModel();
        m_rows = std::move(rows);
        m_icons.clear();
        endResetModel();
        return true;
    }
    void iconsArrived() {
        if (!m_rows.empty()) {
            emit dataChanged(index(0), index(rowCount() - 1), {Qt::DecorationRole});
        }
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
            return {};
        }
        const auto& row = m_rows[static_cast<std::size_t>(index.row())];
        switch (role) {
        case Qt::DisplayRole:
            return row.label;
        case Qt::ToolTipRole:
            return toolTipText(row.label);
        case kSizeRole:
            return words(Formatting::byteCount(row.bytes));
        case Qt::AccessibleTextRole:
            return row.label + QStringLiteral(", ") + words(Formatting::byteCount(row.bytes));
        case Qt::DecorationRole:
            return row.icon ? QVariant(m_icons.at(*row.icon, qGuiApp->devicePixelRatio())) : QVariant();
        default:
            return {};
        }
    }

  private:
    std::vector<SummaryList::Row> m_rows;
    mutable IconPixmaps m_icons{kIconSide};
};

SummaryList::SummaryList(const QString& name, QWidget* parent)
    : Card(parent)
    , m_model(new SummaryListModel(this))
    , m_list(new ReadingList) {
    m_list->setAccessibleName(name);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new SummaryDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setTabKeyNavigation(false);
    m_list->viewport()->setAutoFillBackground(false);

    auto* const column = new QVBoxLayout(this);
    // The list reaches the edge, so that the scroll bar lies beside the sizes and not over them.
    column->setContentsMargins(kEdge, kOuterSpace, kEdge, kOuterSpace);
    column->addWidget(m_list);
    // A low row count must not stretch the card; a high one may be cut off and scrolled.
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);

    auto* const arrivals = new LibraryObserver(
        [this] {
            IconCache::shared().latestArrival.get();
            m_model->iconsArrived();
        },
        this);
    arrivals->renderNow();
}

SummaryList::~SummaryList() = default;

void SummaryList::setRows(const std::vector<Row>& rows) {
    if (m_model->setRows(rows)) {
        updateGeometry();
    }
}

QSize SummaryList::sizeHint() const {
    return {200, m_model->rowCount() * Fonts::rowHeight(kRowHeight, 12.5) + 2 * kOuterSpace};
}

QSize SummaryList::minimumSizeHint() const {
    const int atLeast = std::min(m_model->rowCount(), 2);
    return {120, atLeast * Fonts::rowHeight(kRowHeight, 12.5) + 2 * kOuterSpace};
}

} // namespace quillane
