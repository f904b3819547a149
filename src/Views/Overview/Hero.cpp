#include "Overview/Hero.h"
#include "Components/FittedLabel.h"
#include "Components/Fonts.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Components/Spinner.h"
#include "Formatting.h"
#include "Overview/CompositionBar.h"
#include "Overview/OverviewCategories.h"
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace quillane {

namespace {

constexpr int kFigureHeight = 56; // also while a scan runs, so that nothing jumps
constexpr int kSpinner = 16;
constexpr TextStyle kProgressStyle{17, QFont::Medium, Tint::Secondary, 0};

} // namespace

Hero::Hero(const AppLibrary& library, QWidget* parent)
    : Card(parent, Kind::Hero)
    , m_library(library)
    , m_heading(new Label(QStringLiteral("RECLAIMABLE NOW"), TextStyle::overline()))
    , m_figure(new FittedLabel({}, TextStyle::heroFigure(), 24))
    , m_progress(new Label({}, kProgressStyle))
    , m_bar(new CompositionBar)
    , m_button(new PushButton(QStringLiteral("Review and Clean"), QStringLiteral("sparkles"),
                              PushButton::Role::Filled, PushButton::Size::Hero))
    , m_sentence(Label::wrapped(
          QStringLiteral(
              "Opens a full list of every file first. Nothing moves until you confirm it there, and "
              "Quillane never cleans on a schedule or at launch."),
          TextStyle::secondary())) {
    auto* const line = new QHBoxLayout;
    line->setSpacing(16);
    line->addWidget(makeFigure(), 1);
    line->addWidget(m_button, 0, Qt::AlignVCenter);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(20, 18, 20, 19);
    column->setSpacing(0);
    column->addWidget(m_heading);
    column->addLayout(line);
    column->addSpacing(12);
    column->addWidget(m_bar);
    column->addSpacing(14);
    column->addWidget(m_sentence);
}

QWidget* Hero::makeFigure() {
    auto* const scan = new QWidget;
    auto* const row = new QHBoxLayout(scan);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(new Spinner(kSpinner));
    row->addWidget(m_progress, 1);

    m_states = new QStackedWidget;
    Fonts::follow(m_states, [states = m_states] {
        states->setFixedHeight(Fonts::rowHeight(kFigureHeight, TextStyle::heroFigure().px, 0));
    });
    m_states->addWidget(scan);
    m_states->addWidget(m_figure);
    return m_states;
}

bool Hero::canSweep(const AppLibrary& library) {
    return library.phase->kind == AppLibrary::Phase::Kind::ready && !library.isSweeping.get() &&
           !library.isPuttingBack.get() && library.selectedSweepBytes() > 0;
}

QString Hero::scanLabel(const AppLibrary::Phase& phase) {
    switch (phase.kind) {
    case AppLibrary::Phase::Kind::idle:
        return QStringLiteral("Ready");
    case AppLibrary::Phase::Kind::scanning:
        return QStringLiteral("Finding applications…");
    case AppLibrary::Phase::Kind::measuring:
        return words("Measuring " + Formatting::number(phase.done) + " of " +
                     Formatting::number(phase.total) + "…");
    case AppLibrary::Phase::Kind::findingOrphans:
        return QStringLiteral("Looking for orphaned files…");
    case AppLibrary::Phase::Kind::findingDeveloperCaches:
        return QStringLiteral("Measuring developer caches…");
    case AppLibrary::Phase::Kind::ready:
        return {};
    }
    return {};
}

void Hero::render() {
    const bool isReady = m_library.phase->kind == AppLibrary::Phase::Kind::ready;
    std::vector<CompositionBar::Part> parts;
    if (isReady) {
        for (const auto category : kOverviewCategories) {
            if (m_library.sweepSelection->contains(category))
                parts.emplace_back(category, m_library.bytes(category));
        }
        m_figure->setText(words(Formatting::byteCount(m_library.selectedSweepBytes())));
    }
    m_progress->setText(scanLabel(*m_library.phase));
    m_states->setCurrentIndex(isReady ? 1 : 0);
    m_bar->setParts(std::move(parts));
    m_button->setLabel(m_library.isSweeping.get() ? QStringLiteral("Cleaning")
                                                  : QStringLiteral("Review and Clean"));
    m_button->setEnabled(canSweep(m_library));
}

} // namespace quillane
