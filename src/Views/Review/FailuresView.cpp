#include "Review/FailuresView.h"
#include "Components/Fonts.h"
#include "Components/PushButton.h"
#include "Components/Rule.h"
#include "Components/ShownText.h"
#include "Components/TextStyle.h"
#include "Components/Tokens.h"
#include "Formatting.h"
#include "Review/DisclosureButton.h"
#include "Review/FailuresModel.h"
#include <QHBoxLayout>
#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>

namespace quillane {

namespace {

constexpr int kRowHeight = 22;
constexpr int kListPadding = 5; // above and below the rows
constexpr int kNameLeft = 32;   // below the sign's right edge
constexpr int kReasonRight = 12;
constexpr int kGap = 12;

class FailureDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {100, Fonts::rowHeight(kRowHeight, 12, 6)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const Tokens& tokens = Tokens::current();
        const QRectF row = QRectF(option.rect).adjusted(kNameLeft, 0, -kReasonRight, 0);
        const QString reason = index.data(FailuresModel::kReasonRole).toString();
        painter->save();
        painter->setFont(TextStyle::note().font());
        const QFontMetricsF metrics(painter->font());
        const double reasonWidth = std::min(metrics.horizontalAdvance(reason), row.width() / 2);
        const double nameWidth = row.width() - reasonWidth - kGap;
        painter->setPen(tokens.text2);
        painter->drawText(row, Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine,
                          metrics.elidedText(reason, Qt::ElideRight, reasonWidth + 1));
        painter->setPen(tokens.text);
        painter->drawText(row, Qt::AlignVCenter | Qt::TextSingleLine,
                          metrics.elidedText(index.data().toString(), Qt::ElideMiddle, nameWidth));
        painter->restore();
    }
};

class FailureList : public QListView {
  public:
    explicit FailureList(std::vector<Uninstaller::Failure> failures) {
        setAccessibleName(QStringLiteral("What failed"));
        setFrameShape(NoFrame);
        setUniformItemSizes(true);
        setEditTriggers(NoEditTriggers);
        setTabKeyNavigation(false);
        setVerticalScrollMode(ScrollPerPixel);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        viewport()->setAutoFillBackground(false);
        setItemDelegate(new FailureDelegate(this));
        const int rows = static_cast<int>(std::min<std::size_t>(failures.size(), 100));
        setModel(new FailuresModel(std::move(failures), this));
        setViewportMargins(0, kListPadding, 0, kListPadding);
        Fonts::follow(this, [this, rows] {
            const int wanted = rows * sizeHintForRow(0) + 2 * kListPadding;
            setFixedHeight(std::min(wanted, FailuresView::kHighestList));
        });
    }
};

} // namespace

QString FailuresView::cause(const std::vector<Uninstaller::Failure>& failures) {
    const auto blocked = std::ranges::count_if(failures, &Uninstaller::Failure::isAccessDenied);
    if (blocked == 0) {
        return {};
    }
    if (static_cast<std::size_t>(blocked) == failures.size()) {
        return QStringLiteral("macOS blocked access");
    }
    return words(Formatting::number(blocked) + " blocked by macOS");
}

FailuresView::FailuresView(std::vector<Uninstaller::Failure> failures, std::function<void()> onGrantAccess,
                           QWidget* parent)
    : Card(parent)
    , m_count(words(Formatting::number(static_cast<std::int64_t>(failures.size())) + " failed"))
    , m_cause(cause(failures))
    , m_disclosure(new DisclosureButton(m_count, m_cause))
    , m_rule(new Rule(Rule::Weight::Row))
    , m_list(new FailureList(std::move(failures))) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 0, 1, 2); // the card's edge, and its shadow below
    column->setSpacing(0);
    auto* head = new QHBoxLayout;
    head->setContentsMargins(11, 5, 11, 5);
    head->addWidget(m_disclosure, 1);
    if (!m_cause.isEmpty()) {
        m_grant = new PushButton(QStringLiteral("Grant Full Disk Access…"), {}, PushButton::Role::Normal,
                                 PushButton::Size::Small);
        m_grant->setAutoDefault(true); // Return on it presses it
        head->addWidget(m_grant);
        connect(m_grant, &QPushButton::clicked, this, [call = std::move(onGrantAccess)] { call(); });
    }
    column->addLayout(head);
    column->addWidget(m_rule);
    column->addWidget(m_list);
    setShowingFailures(false);
    connect(m_disclosure, &QAbstractButton::toggled, this, &FailuresView::setShowingFailures);
}

void FailuresView::setShowingFailures(bool showing) {
    m_showingFailures = showing;
    m_disclosure->setChecked(showing);
    m_rule->setVisible(showing);
    m_list->setVisible(showing);
}

} // namespace quillane
