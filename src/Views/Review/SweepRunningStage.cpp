#include "Review/SweepRunningStage.h"
#include "AppLibrary.h"
#include "Components/Announcement.h"
#include "Components/ElidedLabel.h"
#include "Components/LibraryObserver.h"
#include "Components/Look.h"
#include "Components/ProgressBar.h"
#include "Components/ProgressRing.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include <QVBoxLayout>
#include <chrono>
#include <cmath>

namespace quillane {

namespace {
constexpr int kBarWidth = 360;
constexpr int kStatusWidth = 520;
constexpr std::chrono::seconds kBetweenAnnouncements{5};
} // namespace

SweepRunningStage::SweepRunningStage(AppLibrary& library, std::size_t total, QWidget* parent)
    : QWidget(parent)
    , m_library(library)
    , m_total(static_cast<int>(total))
    , m_ring(new ProgressRing(QStringLiteral("sparkles")))
    , m_figure(new Label({}, TextStyle::figure()))
    , m_caption(new Label(QStringLiteral("reclaimed so far"), TextStyle::bodySecondary()))
    , m_bar(new ProgressBar(kBarWidth))
    , m_count(new Label({}, {12, QFont::Medium}))
    , m_status(new ElidedLabel({}, TextStyle::secondary()))
    , m_promise(new Label(QStringLiteral("Moving to the Trash. Everything here can be put back."),
                          TextStyle::secondary()))
    , m_observer(new LibraryObserver([this] { render(); }, this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(0);
    const auto add = [column](QWidget* widget, int below) {
        column->addWidget(widget, 0, Qt::AlignHCenter);
        column->addSpacing(below);
    };
    column->addStretch();
    add(m_ring, 22);
    add(m_figure, 0);
    add(m_caption, 26);
    add(m_bar, 10);
    add(m_count, 3);
    add(m_status, 26);
    add(m_promise, 0);
    column->addStretch();
    m_status->setFixedWidth(kStatusWidth);
    m_status->setAlignment(Qt::AlignCenter);
    for (auto* gauge : {static_cast<QProgressBar*>(m_ring), static_cast<QProgressBar*>(m_bar)}) {
        gauge->setRange(0, kSteps);
        gauge->setValue(0);
        gauge->setAccessibleName(QStringLiteral("Progress"));
    }
    setFocusPolicy(Qt::StrongFocus);
    m_easing.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_easing, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { m_bar->setValue(value.toInt()); });
    m_observer->renderNow();
}

double SweepRunningStage::progressFraction(int processed, int total) {
    return total == 0 ? 0 : static_cast<double>(processed) / total;
}

// Until the library has begun, its figures are those of the sweep before.
void SweepRunningStage::render() {
    m_hasBegun = *m_library.isSweeping || m_hasBegun;
    const int processed = m_hasBegun ? *m_library.sweepProcessed : 0;
    const int total = m_hasBegun ? *m_library.sweepTotal : m_total;
    const Bytes reclaimed = m_hasBegun ? *m_library.sweepReclaimedSoFar : 0;
    const auto& status = *m_library.sweepStatus;
    m_figure->setText(words(Formatting::byteCount(reclaimed)));
    m_count->setText(words(Formatting::number(processed) + " of " + Formatting::number(total)));
    m_status->setText(m_hasBegun && status ? shownName(*status) : QStringLiteral("…"));
    showFraction(progressFraction(processed, total));
    if (m_hasBegun) {
        announceProgress();
    }
}

void SweepRunningStage::showFraction(double fraction) {
    const int steps = static_cast<int>(std::lround(fraction * kSteps));
    if (steps != m_ring->value()) {
        m_ring->setValue(steps); // which eases by itself
        easeBar(steps);
    }
}

void SweepRunningStage::easeBar(int steps) {
    m_easing.stop();
    const int milliseconds = isVisible() ? Look::duration(kMilliseconds) : 0;
    if (milliseconds == 0) {
        m_bar->setValue(steps);
        return;
    }
    m_easing.setDuration(milliseconds);
    m_easing.setStartValue(m_bar->value());
    m_easing.setEndValue(steps);
    m_easing.start();
}

void SweepRunningStage::announceProgress() {
    const Instant now = m_library.platform().clock.instant();
    if (m_announcedAt && now - *m_announcedAt < kBetweenAnnouncements) {
        return;
    }
    m_announcedAt = now;
    announce(*this, m_figure->text() + QStringLiteral(" ") + m_caption->text() + QStringLiteral(", ") +
                        m_count->text());
}

} // namespace quillane
