#include "Onboarding/OnboardingView.h"
#include "AppLibrary.h"
#include "Components/Announcement.h"
#include "Components/Fonts.h"
#include "Components/PushButton.h"
#include "Components/Rule.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "Onboarding/PageDots.h"
#include "Onboarding/SlideDeck.h"
#include "Onboarding/SlideView.h"
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

namespace quillane {

namespace {

constexpr int kFeaturePage = 1;
constexpr int kPermissionPage = 3;
constexpr int kControlsHeight = 64; // with the line above them

PushButton* sheetButton(const QString& text, PushButton::Role role = PushButton::Role::Normal) {
    return new PushButton(text, {}, role, PushButton::Size::Sheet);
}

bool isReturn(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

OnboardingView::OnboardingView(AppLibrary& library, QWidget* over)
    : Sheet(kSize, over)
    , m_library(library)
    , m_deck(new SlideDeck)
    , m_scroll(new QScrollArea)
    , m_skip(sheetButton(QStringLiteral("Skip"), PushButton::Role::Plain))
    , m_dots(new PageDots(static_cast<int>(pages().size())))
    , m_back(sheetButton(QStringLiteral("Back")))
    , m_grant(sheetButton(QStringLiteral("Grant Access")))
    , m_main(sheetButton({}, PushButton::Role::Filled)) {
    setWindowTitle(pages().front().title);
    setAccessibleName(pages().front().title);
    makeSlides();
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_scroll, 1);
    column->addWidget(new Rule);
    column->addWidget(makeControls());
    connectControls();
    Fonts::follow(this, [this, column] {
        const int controls = column->itemAt(2)->sizeHint().height() + 1;
        setWantedSize(
            {kSize.width(), std::max(kSize.height(), m_deck->heightForWidth(kSize.width()) + controls)});
    });
    renderControls();
    setAccessibleDescription(pages().front().body);
    m_main->setDefault(true); // only now: a dialog does not hear of one that joins it later
    m_main->setFocus();
}

OnboardingView* OnboardingView::present(AppLibrary& library, QWidget* over) {
    auto* const sheet = new OnboardingView(library, over);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
    return sheet;
}

// They scroll where large text has not enough room in a low window.
void OnboardingView::makeSlides() {
    for (int page = 0; page < static_cast<int>(pages().size()); ++page) {
        m_deck->addWidget(
            new SlideView(pages()[static_cast<std::size_t>(page)], page == kFeaturePage, page == 0));
    }
    m_scroll->setWidget(m_deck);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->viewport()->setAutoFillBackground(false);
    m_deck->setAutoFillBackground(false);
}

QWidget* OnboardingView::makeControls() {
    auto* const controls = new QWidget;
    Fonts::follow(controls, [controls] {
        controls->setMinimumHeight(Fonts::rowHeight(kControlsHeight - 1, 13, kControlsHeight - 17));
    });
    auto* const row = new QHBoxLayout(controls);
    row->setContentsMargins(20, 0, 20, 0);
    row->setSpacing(8);
    auto policy = m_skip->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_skip->setSizePolicy(policy);
    row->addWidget(m_skip);
    row->addSpacing(6);
    row->addWidget(m_dots);
    row->addStretch();
    row->addWidget(m_back);
    row->addWidget(m_grant);
    row->addWidget(m_main);
    // Return on a button that the user has gone to presses that button.
    for (auto* const button : {m_skip, m_back, m_grant, m_main}) {
        button->setAutoDefault(true);
        button->installEventFilter(this);
    }
    return controls;
}

void OnboardingView::connectControls() {
    connect(m_skip, &QPushButton::clicked, this, &OnboardingView::finish);
    connect(m_back, &QPushButton::clicked, this, &OnboardingView::goBack);
    connect(m_grant, &QPushButton::clicked, this,
            [this] { AppLibrary::openFullDiskAccessSettings(m_library.platform()); });
    connect(m_main, &QPushButton::clicked, this, [this] {
        if (isLast()) {
            finish();
        } else {
            goForward();
        }
    });
    // The keys of the window rest while a sheet lies over it, and the program can be left all the same.
    auto* const quit = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), this);
    connect(quit, &QShortcut::activated, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

SlideView* OnboardingView::slide() const {
    return m_deck->slide(m_page);
}

bool OnboardingView::isLast() const {
    return m_page + 1 == static_cast<int>(pages().size());
}

void OnboardingView::goForward() {
    if (!isLast()) {
        turnTo(m_page + 1, true);
    }
}

void OnboardingView::goBack() {
    if (m_page > 0) {
        turnTo(m_page - 1, false);
    }
}

void OnboardingView::turnTo(int page, bool forward) {
    m_page = page;
    m_goingForward = forward;
    m_main->setFocus(); // before the button that has it may go
    m_deck->turnTo(page, forward);
    m_scroll->verticalScrollBar()->setValue(0);
    renderControls();
    tellPage();
}

void OnboardingView::renderControls() {
    m_skip->setVisible(!isLast());
    m_dots->setPage(m_page);
    m_back->setVisible(m_page > 0);
    m_grant->setVisible(m_page == kPermissionPage);
    m_main->setLabel(isLast() ? QStringLiteral("Get Started") : QStringLiteral("Continue"));
}

void OnboardingView::tellPage() {
    const Slide& slide = pages()[static_cast<std::size_t>(m_page)];
    setAccessibleDescription(slide.title + QStringLiteral(". ") + slide.body);
    announce(*m_deck, m_dots->text() + QStringLiteral(". ") + accessibleDescription());
}

void OnboardingView::finish() {
    m_library.platform().defaults.set(DefaultsKeys::kHasSeenOnboarding, true);
    accept();
}

// Escape closes nothing here, and a Return that is held turns no pages.
void OnboardingView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel) || (event->isAutoRepeat() && isReturn(*event))) {
        return;
    }
    Sheet::keyPressEvent(event);
}

// A button would take the arrows for a step to its neighbour, and each repetition of a held Return for a press.
bool OnboardingView::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress && object != parent()) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if ((key.isAutoRepeat() && isReturn(key)) || turnOrScroll(key.key())) {
            return true;
        }
    }
    return Sheet::eventFilter(object, event);
}

// True where the key has done its work.
bool OnboardingView::turnOrScroll(int key) {
    switch (key) {
    case Qt::Key_Left:
        goBack();
        return true;
    case Qt::Key_Right:
        goForward();
        return true;
    default:
        return scroll(key);
    }
}

// Without effect where all is in sight.
bool OnboardingView::scroll(int key) {
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_PageUp:
        m_scroll->verticalScrollBar()->triggerAction(QScrollBar::SliderPageStepSub);
        return true;
    case Qt::Key_Down:
    case Qt::Key_PageDown:
        m_scroll->verticalScrollBar()->triggerAction(QScrollBar::SliderPageStepAdd);
        return true;
    default:
        return false;
    }
}

} // namespace quillane
