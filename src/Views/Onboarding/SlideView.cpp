#include "Onboarding/SlideView.h"
#include "Components/CategoryTint.h"
#include "Components/FlowLayout.h"
#include "Components/Fonts.h"
#include "Components/Label.h"
#include "Components/ShownText.h"
#include "Components/Tile.h"
#include "Onboarding/BrandMark.h"
#include "Onboarding/FeatureChip.h"
#include "Onboarding/Paragraph.h"
#include <QShowEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <utility>

namespace quillane {

namespace {

constexpr int kTile = 84;
constexpr int kTileSymbol = 44;
constexpr int kTextWidth = 500;
constexpr int kWidestText = 600; // of large text
constexpr int kAir = 16;         // above and below
constexpr int kLineHeight = 22;
constexpr int kChipGap = 8;

} // namespace

SlideView::SlideView(Slide slide, bool showFeatureRow, bool showMark, QWidget* parent)
    : QWidget(parent)
    , m_slide(std::move(slide))
    , m_showFeatureRow(showFeatureRow)
    , m_showMark(showMark)
    , m_title(Label::wrapped(m_slide.title, TextStyle::welcomeTitle()))
    , m_body(new Paragraph(m_slide.body, TextStyle::welcomeBody(), kLineHeight)) {
    m_title->setAlignment(Qt::AlignCenter);
    auto* const column = new QVBoxLayout(this);
    column->setSpacing(0);
    column->addStretch();
    column->addWidget(makePicture(), 0, Qt::AlignHCenter);
    column->addSpacing(25);
    column->addWidget(m_title);
    column->addSpacing(10);
    column->addWidget(m_body);
    if (m_showFeatureRow) {
        column->addSpacing(26);
        column->addWidget(makeFeatureRow());
    }
    column->addStretch();
    const int below = m_showFeatureRow ? kAir - FeatureChip::kRise : kAir; // chips bring some of it
    Fonts::follow(this, [column, below] {
        const auto grown = static_cast<int>(std::lround(kTextWidth * Fonts::scale()));
        const int aside = (kWidth - std::clamp(grown, kTextWidth, kWidestText)) / 2;
        column->setContentsMargins(aside, kAir, aside, below);
    });
}

QWidget* SlideView::makePicture() const {
    if (m_showMark) {
        return new BrandMark;
    }
    return new Tile(m_slide.symbol.value_or(QString()), m_slide.accent, kTile, kTileSymbol);
}

QWidget* SlideView::makeFeatureRow() {
    auto* const row = new QWidget;
    auto* const flow = new FlowLayout(row, kChipGap);
    flow->setCentred(true);
    flow->setRowSpacing(kChipGap - FeatureChip::kRise);
    double delay = kFirstChip;
    for (const auto category : kAllSweepCategories) {
        auto* const chip = new FeatureChip(quillane::words(symbol(category)),
                                           quillane::words(rawValue(category)), tintOf(category), delay);
        flow->addWidget(chip);
        m_chips.push_back(chip);
        delay += kNextChip;
    }
    return row;
}

void SlideView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous()) {
        return; // the window comes back from the dock
    }
    m_appeared = true;
    for (auto* const chip : m_chips) {
        chip->appear();
    }
}

void SlideView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (event->spontaneous()) {
        return;
    }
    m_appeared = false;
    for (auto* const chip : m_chips) {
        chip->disappear();
    }
}

} // namespace quillane
