#include "Review/SweepDoneStage.h"
#include "Components/Label.h"
#include "Components/Panel.h"
#include "Components/PushButton.h"
#include "Components/Sheet.h"
#include "Components/ShownText.h"
#include "Components/SymbolView.h"
#include "Formatting.h"
#include "Review/FailuresView.h"
#include "Review/ResultMark.h"
#include "Review/SweepResultRow.h"
#include <QHBoxLayout>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

namespace quillane {

namespace {
constexpr int kCardWidth = 496;
constexpr int kPutBackSymbol = 14;
} // namespace

SweepDoneStage::SweepDoneStage(const SweepReport& report, std::function<void()> onGrantAccess,
                               QWidget* parent)
    : QWidget(parent)
    , m_mark(new ResultMark(report.failures.empty()))
    , m_figure(new Label(words(Formatting::byteCount(report.totalBytes())), TextStyle::figure()))
    , m_caption(new Label(report.totalBytes() >= 1 ? QStringLiteral("reclaimed")
                                                   : QStringLiteral("nothing could be moved"),
                          TextStyle::bodySecondary()))
    , m_done(new PushButton(QStringLiteral("Done"), {}, PushButton::Role::Filled, PushButton::Size::Sheet)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    // All seven categories and a long list of failures are higher than the sheet.
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->viewport()->setAutoFillBackground(false);
    area->setWidget(makeContent(report, std::move(onGrantAccess)));
    area->widget()->setAutoFillBackground(false);
    column->addWidget(area, 1);
    column->addWidget(makeFooter());
    setFocusProxy(m_done);
    connect(m_done, &QPushButton::clicked, this, &SweepDoneStage::finished);
}

QWidget* SweepDoneStage::makeContent(const SweepReport& report, std::function<void()> onGrantAccess) {
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(0);
    column->addStretch();
    column->addWidget(m_mark, 0, Qt::AlignHCenter);
    column->addSpacing(12);
    column->addWidget(m_figure, 0, Qt::AlignHCenter);
    column->addWidget(m_caption, 0, Qt::AlignHCenter);
    const auto add = [column](QWidget* widget, int above) {
        widget->setFixedWidth(kCardWidth);
        column->addSpacing(above);
        column->addWidget(widget, 0, Qt::AlignHCenter);
    };
    m_categories = makeCategories(report);
    if (m_categories != nullptr) {
        add(m_categories, 20);
    }
    if (report.itemsMovedToTrash >= 1) {
        add(makePutBack(report.itemsMovedToTrash), 12);
    }
    if (!report.failures.empty()) {
        m_failures = new FailuresView(report.failures, std::move(onGrantAccess));
        add(m_failures, 14);
    }
    column->addStretch();
    return content;
}

Panel* SweepDoneStage::makeCategories(const SweepReport& report) const {
    Panel* panel = nullptr;
    for (const auto category : kAllSweepCategories) {
        const auto found = report.bytesByCategory.find(category);
        if (found == report.bytesByCategory.end() || found->second <= 0) {
            continue;
        }
        if (panel == nullptr) {
            panel = new Panel;
            panel->layout()->setContentsMargins(1, 0, 1, 1);
        }
        panel->addRow(new SweepResultRow(category, found->second));
    }
    return panel;
}

// The words do not follow the number: they stay as they are for one item too.
QWidget* SweepDoneStage::makePutBack(int items) {
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(9);
    m_putBack = new Label(words(Formatting::number(items) + " items are in the Trash and can be put back"),
                          TextStyle::secondary());
    row->addWidget(new SymbolView(QStringLiteral("arrow.uturn.backward"), kPutBackSymbol, Tint::Link));
    row->addWidget(m_putBack, 1);
    return line;
}

QWidget* SweepDoneStage::makeFooter() {
    auto* footer = new SheetFooter;
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(20, 14, 20, 14);
    row->addStretch();
    row->addWidget(m_done);
    return footer;
}

} // namespace quillane
