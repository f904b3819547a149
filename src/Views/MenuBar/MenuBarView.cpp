#include "MenuBar/MenuBarView.h"
#include "AppLibrary.h"
#include "Components/Announcement.h"
#include "Components/CategoryTint.h"
#include "Components/FigureRow.h"
#include "Components/FittedLabel.h"
#include "Components/Fonts.h"
#include "Components/LibraryObserver.h"
#include "Components/PushButton.h"
#include "Components/Rule.h"
#include "Components/ShownText.h"
#include "Components/SymbolButton.h"
#include "Formatting.h"
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace quillane {

namespace {

using Kind = AppLibrary::Phase::Kind;

constexpr int kSide = 16;
constexpr int kFigureHeight = 36; // also while a scan runs, so that nothing jumps
constexpr TextStyle kFigureStyle{30, QFont::Bold, Tint::Text, -0.5};
constexpr TextStyle kScanningStyle{17, QFont::Medium, Tint::Secondary, 0};
// A plain button's ground, which shows only under the mouse, reaches over the margin by this, so that its words stand
// in line with all others.
constexpr int kOverhang = 12;

PushButton* plainButton(MenuBarWay way) {
    return new PushButton(QString::fromUtf8(words(way)), {}, PushButton::Role::Plain);
}

PushButton* wideButton(MenuBarWay way, const QString& symbol, PushButton::Role role) {
    auto* const button = new PushButton(QString::fromUtf8(words(way)), symbol, role, PushButton::Size::Sheet);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return button;
}

// Larger text has its room, and takes it from the air between words and figures too.
double widthFactor() {
    return 1 + 0.6 * (std::clamp(Fonts::scale(), 1.0, 2.0) - 1);
}

} // namespace

MenuBarView::MenuBarView(AppLibrary& library, QWidget* parent)
    : QWidget(parent)
    , m_library(library)
    , m_heading(new Label(QStringLiteral("RECLAIMABLE NOW"), TextStyle::overline()))
    , m_figure(new FittedLabel({}, kFigureStyle, 15))
    , m_scanning(new Label(QStringLiteral("Scanning…"), kScanningStyle))
    , m_rescan(new SymbolButton(QStringLiteral("arrow.clockwise"), QStringLiteral("Rescan"),
                                PushButton::Role::Plain, 30))
    , m_review(wideButton(MenuBarWay::review, QStringLiteral("sparkles"), PushButton::Role::Filled))
    , m_window(wideButton(MenuBarWay::window, {}, PushButton::Role::Normal))
    , m_settings(plainButton(MenuBarWay::settings))
    , m_quit(plainButton(MenuBarWay::quit))
    , m_observer(new LibraryObserver([this] { render(); }, this)) {
    Fonts::follow(this, [this] { setFixedWidth(static_cast<int>(kWidth * widthFactor())); });
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    for (auto* const part : {makeHead(), makeRows(), makeMainButtons()}) {
        whole->addWidget(part);
        whole->addWidget(new Rule);
    }
    whole->addWidget(makeFoot());
    connect(m_rescan, &QPushButton::clicked, this,
            [this] { m_library.refresh(AppLibrary::ScanReason::user); });
    lead(*m_review, MenuBarWay::review);
    lead(*m_window, MenuBarWay::window);
    lead(*m_settings, MenuBarWay::settings);
    lead(*m_quit, MenuBarWay::quit);
    m_observer->renderNow();
}

void MenuBarView::lead(PushButton& button, MenuBarWay way) {
    connect(&button, &QPushButton::clicked, this, [this, way] { emit wanted(way); });
}

QWidget* MenuBarView::makeHead() {
    m_states = new QStackedWidget;
    Fonts::follow(m_states, [states = m_states] {
        states->setFixedHeight(Fonts::rowHeight(kFigureHeight, kFigureStyle.px, 0));
    });
    m_states->addWidget(m_scanning);
    m_states->addWidget(m_figure);
    auto* const words = new QVBoxLayout;
    words->setSpacing(1);
    words->addWidget(m_heading);
    words->addWidget(m_states);

    auto* const head = new QWidget;
    auto* const row = new QHBoxLayout(head);
    row->setContentsMargins(kSide, 15, kSide, 13);
    row->setSpacing(8);
    row->addLayout(words, 1);
    row->addWidget(m_rescan, 0, Qt::AlignTop);
    return head;
}

QWidget* MenuBarView::makeRows() {
    m_list = new QWidget;
    m_column = new QVBoxLayout(m_list);
    m_column->setContentsMargins(kSide, 7, kSide, 7);
    m_column->setSpacing(0);
    return m_list;
}

QWidget* MenuBarView::makeMainButtons() {
    auto* const part = new QWidget;
    auto* const column = new QVBoxLayout(part);
    column->setContentsMargins(kSide, 12, kSide, 12);
    column->setSpacing(8);
    column->addWidget(m_review);
    column->addWidget(m_window);
    return part;
}

QWidget* MenuBarView::makeFoot() {
    auto* const part = new QWidget;
    auto* const row = new QHBoxLayout(part);
    row->setContentsMargins(kSide - kOverhang, 6, kSide - kOverhang, 6);
    row->setSpacing(0);
    row->addWidget(m_settings);
    row->addStretch(1);
    row->addWidget(m_quit);
    return part;
}

void MenuBarView::takeFocus() {
    (m_review->isEnabled() ? m_review : m_window)->setFocus(Qt::PopupFocusReason);
}

void MenuBarView::render() {
    const Kind phase = m_library.phase->kind;
    const bool isReady = phase == Kind::ready;
    renderRows(isReady);
    renderFigure(isReady);
    enable(*m_review, isOpen(MenuBarWay::review, reclaimable(m_library)));
    enable(*m_rescan, isReady || phase == Kind::idle);
}

// Qt gives the keyboard of a button that is disabled to the next one as if Tab had moved it, ring and all.
void MenuBarView::enable(PushButton& button, bool isEnabled) {
    if (!isEnabled && focusWidget() == &button) {
        m_window->setFocus(Qt::OtherFocusReason);
    }
    button.setEnabled(isEnabled);
}

void MenuBarView::renderFigure(bool isReady) {
    if (isReady) {
        m_figure->setText(words(Formatting::byteCount(m_library.selectedSweepBytes())));
    }
    m_states->setCurrentIndex(isReady ? 1 : 0);
    say();
}

void MenuBarView::renderRows(bool isReady) {
    std::vector<SweepCategory> categories;
    for (const auto category : kAllSweepCategories) {
        if (m_library.sweepSelection->contains(category)) {
            categories.push_back(category);
        }
    }
    showRowsOf(categories);
    for (std::size_t i = 0; i < categories.size(); ++i) {
        m_rows[i]->setFigure(isReady ? words(Formatting::byteCount(m_library.bytes(categories[i])))
                                     : QStringLiteral("—"));
    }
}

void MenuBarView::showRowsOf(const std::vector<SweepCategory>& categories) {
    if (categories == m_categories) {
        return;
    }
    m_categories = categories;
    qDeleteAll(m_rows);
    m_rows.clear();
    for (const auto category : categories) {
        m_rows.push_back(new FigureRow(words(symbol(category)), words(rawValue(category)), tintOf(category)));
        m_column->addWidget(m_rows.back());
    }
    m_list->setVisible(!m_rows.empty());
}

// Who can see it is told; only what has changed.
void MenuBarView::say() {
    const auto* const shown = static_cast<QLabel*>(m_states->currentWidget());
    const QString sentence = m_heading->text() + QStringLiteral(" ") + shown->text();
    if (isVisible() && accessibleName() != sentence) {
        announce(*this, sentence);
    }
}

void MenuBarView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    say();
}

// Return presses the button that has the focus. A held one, which may have opened this, does nothing.
void MenuBarView::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* const button = qobject_cast<QPushButton*>(focusWidget());
    if (!isReturn || button == nullptr) {
        QWidget::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        button->click();
    }
}

} // namespace quillane
