#include "Overview/OverviewView.h"
#include "AppLibrary.h"
#include "Components/Announcement.h"
#include "Components/CardSlot.h"
#include "Components/LibraryObserver.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/PushButton.h"
#include "Overview/AccessNotice.h"
#include "Overview/CategoryRow.h"
#include "Overview/Hero.h"
#include "Overview/OverviewCategories.h"
#include "Overview/PutBackCard.h"
#include "Overview/RecentUninstallCards.h"
#include "Review/PutBack.h"
#include "State/ContentState.h"
#include <QCheckBox>
#include <QKeyEvent>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <string>
#include <utility>

namespace quillane {

namespace {

constexpr int kPadding = 24;
constexpr int kGap = 12;
constexpr auto kLabel = "Clean Now"; // what the put-back card calls every cleanup from here

using Kind = AppLibrary::Phase::Kind;

// The record is found by the words of the label: nothing else ties the review to its card. Of two applications with
// one name the first record goes. The library runs this to its end though the window may be gone.
Task<SweepReport> sweepLeftovers(AppLibrary& library, std::vector<SweepEntry> entries, std::string label) {
    auto report = co_await library.runSweep(std::move(entries), label);
    const auto records = *library.recentUninstalls;
    const auto swept = std::ranges::find_if(records, [&label](const RecentUninstall& record) {
        return "Remove " + record.name + " leftovers" == label;
    });
    if (swept != records.end()) {
        library.dismissRecentUninstall(*swept);
    }
    co_return report;
}

} // namespace

OverviewView::OverviewView(AppLibrary& library, ContentState& state, QWidget* parent)
    : ColumnGround(Ground::Page, parent)
    , m_library(library)
    , m_state(state)
    , m_hero(new Hero(library))
    , m_granted(new Note(QStringLiteral("checkmark.shield.fill"),
                         QStringLiteral("Full Disk Access granted. Rescanning the folders that were hidden."),
                         Tint::Green))
    , m_recent(new RecentUninstallCards(library.platform().clock, kGap, m_hero->button()))
    , m_accessNotice(new AccessNotice)
    , m_putBack(new PutBackCard(library.platform().clock))
    , m_grantedSlot(new CardSlot(m_granted, kGap))
    , m_accessSlot(new CardSlot(m_accessNotice, kGap))
    , m_putBackSlot(new CardSlot(m_putBack, kGap)) {
    auto* const cards = new QWidget;
    auto* const column = new QVBoxLayout(cards);
    column->setContentsMargins(kPadding, 16, kPadding, kPadding);
    column->setSpacing(0); // each card brings the gap above it, which closes up with it
    makeCards(column);

    auto* const scroll = new QScrollArea;
    scroll->setWidget(cards);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus); // what has the focus inside is scrolled to
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->viewport()->setAutoFillBackground(false);
    cards->setAutoFillBackground(false);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);
    setFocusProxy(m_rows.front()->checkBox());

    if (state.notifications) {
        m_openPreview = state.notifications->observe(NotificationName::kOpenSweepPreview,
                                                     [this](const auto&) { receiveReview(); });
    }
    m_observer = new LibraryObserver([this] { render(); }, this);
    m_observer->drawOnlyInSight(this);
    m_observer->renderNow();
    (new LibraryObserver([this] { renderGranted(); }, this))
        ->renderNow(); // is announced wherever the user is
    m_waitingObserver = new LibraryObserver([this] { renderWaiting(); }, this);
    m_waitingObserver->renderNow();
}

OverviewView::~OverviewView() = default;

void OverviewView::makeCards(QVBoxLayout* column) {
    column->addWidget(m_hero);
    column->addWidget(m_grantedSlot);
    column->addWidget(m_recent);
    column->addSpacing(kGap);
    column->addWidget(makeCategories());
    column->addWidget(m_accessSlot);
    column->addWidget(m_putBackSlot);
    column->addStretch(1);
    connect(m_hero->button(), &QPushButton::clicked, this, &OverviewView::openReview);
    connect(m_accessNotice->grantButton(), &QPushButton::clicked, this, &OverviewView::grantAccess);
    connect(m_recent, &RecentUninstallCards::reviewWanted, this, &OverviewView::reviewLeftovers);
    connect(m_recent, &RecentUninstallCards::dismissWanted, this,
            [this](const RecentUninstall& record) { m_library.dismissRecentUninstall(record); });
    if (m_state.putBack)
        connect(m_putBack->putBackButton(), &QPushButton::clicked, m_state.putBack, &PutBack::start);
}

QWidget* OverviewView::makeCategories() {
    auto* const panel = new Panel;
    panel->layout()->setContentsMargins(1, 1, 1, 2); // rows go from edge to edge
    for (const auto category : kOverviewCategories)
        panel->addRow(makeRow(category));
    return panel;
}

CategoryRow* OverviewView::makeRow(SweepCategory category) {
    auto* const row = new CategoryRow(category);
    connect(row, &CategoryRow::toggled, this, [this, category](bool isOn) { tick(category, isOn); });
    connect(row, &CategoryRow::grantAccessAsked, this, &OverviewView::grantAccess);
    m_rows.push_back(row);
    return row;
}

void OverviewView::render() {
    m_hero->render();
    m_recent->show(*m_library.recentUninstalls);
    for (auto* const row : m_rows)
        renderRow(*row);
    renderAccessNotice();
    renderPutBack();
}

void OverviewView::renderRow(CategoryRow& row) const {
    const auto category = row.category();
    CategoryRow::State state;
    state.isMeasured = m_library.phase->kind == Kind::ready;
    state.needsAccess = category == SweepCategory::trash && m_library.trashState->needsFullDiskAccess;
    state.isOn = m_library.sweepSelection->contains(category);
    if (state.isMeasured) {
        state.bytes = m_library.bytes(category);
        state.count = m_library.itemCount(category);
    }
    row.setState(state);
}

void OverviewView::renderGranted() {
    const bool isGranted = m_library.accessJustGranted.get();
    if (isGranted && m_granted->isHidden())
        announce(*m_granted, m_granted->text());
    m_grantedSlot->setShown(isGranted);
}

void OverviewView::renderAccessNotice() {
    const auto count = m_library.inaccessible->size();
    if (count > 0) // else it goes with the count that it told
        m_accessNotice->setCount(static_cast<int>(count));
    m_accessSlot->setShown(count > 0);
}

void OverviewView::renderPutBack() {
    const auto& operation = *m_library.lastOperation;
    if (operation)
        m_putBack->setOperation(*operation);
    m_putBackSlot->setShown(operation.has_value());
    const Kind phase = m_library.phase->kind;
    m_putBack->putBackButton()->setEnabled((phase == Kind::idle || phase == Kind::ready) &&
                                           !m_library.isSweeping.get() && !m_state.isPuttingBack.get());
}

void OverviewView::tick(SweepCategory category, bool isOn) {
    auto selection = *m_library.sweepSelection;
    if (isOn)
        selection.insert(category);
    else
        selection.erase(category);
    m_library.sweepSelection = std::move(selection);
}

void OverviewView::grantAccess() const {
    AppLibrary::openFullDiskAccessSettings(m_library.platform());
}

bool OverviewView::isReviewing() const {
    const auto isOpen = [](const SweepPreviewSheet* sheet) { return sheet != nullptr && sheet->isVisible(); };
    return isOpen(m_review) || isOpen(m_leftoverReview) || m_state.removal->has_value();
}

void OverviewView::openReview() {
    if (isReviewing() || !Hero::canSweep(m_library))
        return;
    if (isHeldBack()) {
        keep([this] { openReview(); });
        return;
    }
    m_review = SweepPreviewSheet::present(m_library, BulkRemoval::make(kLabel, m_library.fullPlan()), this);
}

// The popover doesn't know of a put back. What can be reviewed is known when the scan that follows it has ended.
void OverviewView::receiveReview() {
    if (m_library.isPuttingBack.get() || m_state.isPuttingBack.get())
        keep([this] { openReview(); });
    else
        openReview();
}

bool OverviewView::isHeldBack() {
    return m_state.showOnboarding.get() || Sheet::keepsWaiting(*window(), *m_waitingObserver);
}

// Of several that were asked for the last one opens.
void OverviewView::keep(std::function<void()> open) {
    m_waiting = std::move(open);
    m_waitingObserver->schedule();
}

// At another turn, so that nothing that the review reads is observed from here.
void OverviewView::renderWaiting() {
    if (!m_waiting || isHeldBack() || m_library.isPuttingBack.get() || m_state.isPuttingBack.get() ||
        m_library.phase->kind != Kind::ready)
        return;
    QMetaObject::invokeMethod(this, std::exchange(m_waiting, nullptr), Qt::QueuedConnection);
}

// Opens for nothing too: the card says what was left then, and the review that none of it is there any more.
void OverviewView::reviewLeftovers(const RecentUninstall& record) {
    if (isReviewing())
        return;
    if (isHeldBack()) {
        keep([this, record] { reviewLeftovers(record); });
        return;
    }
    auto removal = m_library.removalForRecentUninstall(record);
    auto sweep = [&library = m_library, label = removal.label](std::vector<SweepEntry> entries) {
        return sweepLeftovers(library, std::move(entries), label);
    };
    m_leftoverReview = SweepPreviewSheet::present(m_library, std::move(removal), std::move(sweep), this);
}

// Return presses the button that has the focus, else the main one; a held one, which may have closed a sheet just
// now, does nothing.
void OverviewView::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        ColumnGround::keyPressEvent(event);
        return;
    }
    if (event->isAutoRepeat())
        return;
    if (auto* const button = qobject_cast<QPushButton*>(focusWidget()); button && button->hasFocus())
        button->click();
    else
        openReview();
}

} // namespace quillane
