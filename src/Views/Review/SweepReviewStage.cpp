#include "Review/SweepReviewStage.h"
#include "Components/Label.h"
#include "Components/PushButton.h"
#include "Components/Rule.h"
#include "Components/Sheet.h"
#include "Components/ShownText.h"
#include "Components/Tile.h"
#include "Review/SweepReviewList.h"
#include "Review/SweepReviewModel.h"
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillane {

namespace {
constexpr int kTile = 40;
constexpr int kTileSymbol = 22;
constexpr int kNoteWidth = 236; // breaks the sentence into two lines of about the same length
} // namespace

SweepReviewStage::SweepReviewStage(SweepReviewModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_list(new SweepReviewList(model))
    , m_headline(new Label(words(model.review().headline()), TextStyle::detailTitle()))
    , m_explanation(Label::wrapped(
          QStringLiteral("Every path below will move to the Trash. Untick anything you want to keep. Nothing "
                         "happens until you press the button at the bottom."),
          TextStyle::secondary()))
    , m_count(new Label({}, TextStyle::heading()))
    , m_trashNote(Label::wrapped(
          QStringLiteral("The Trash is emptied first, so everything else here stays recoverable."),
          TextStyle::caption()))
    , m_cancel(
          new PushButton(QStringLiteral("Cancel"), {}, PushButton::Role::Normal, PushButton::Size::Sheet))
    , m_main(new PushButton({}, {}, PushButton::Role::Filled, PushButton::Size::Sheet)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHead());
    column->addWidget(new Rule);
    column->addWidget(m_list, 1);
    column->addWidget(makeFooter());
    setTabOrder(m_list, m_cancel);
    setTabOrder(m_cancel, m_main);
    setFocusProxy(m_list);

    // Return on a button that the user has gone to presses that button and never the one that removes.
    m_cancel->setAutoDefault(true);
    connect(m_cancel, &QPushButton::clicked, this, &SweepReviewStage::cancelled);
    connect(m_main, &QPushButton::clicked, this, &SweepReviewStage::confirmed);
    connect(&m_model, &SweepReviewModel::tickedChanged, this, &SweepReviewStage::render);
    render();
}

QWidget* SweepReviewStage::makeHead() {
    auto* head = new QWidget;
    auto* column = new QVBoxLayout(head);
    column->setContentsMargins(24, 20, 24, 14);
    column->setSpacing(10);
    auto* title = new QHBoxLayout;
    title->setSpacing(12);
    title->addWidget(new Tile(QStringLiteral("list.bullet.clipboard"), Tint::Link, kTile, kTileSymbol));
    title->addWidget(m_headline, 1);
    column->addLayout(title);
    column->addWidget(m_explanation);
    return head;
}

QWidget* SweepReviewStage::makeFooter() {
    auto* footer = new SheetFooter;
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(20, 13, 20, 12);
    row->setSpacing(10);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    m_trashNote->setFixedWidth(kNoteWidth);
    texts->addWidget(m_count);
    texts->addWidget(m_trashNote);
    row->addLayout(texts);
    row->addStretch();
    row->addWidget(m_cancel);
    row->addWidget(m_main);
    return footer;
}

void SweepReviewStage::setWaiting(bool waiting) {
    m_isWaiting = waiting;
    render();
}

void SweepReviewStage::render() {
    const SweepReview& review = m_model.review();
    const bool permanent = review.emptiesTrash();
    m_count->setText(words(review.footer()));
    m_trashNote->setVisible(permanent);
    m_main->setLabel(words(review.buttonText()));
    m_main->setRole(permanent ? PushButton::Role::Permanent : PushButton::Role::Filled);
    m_main->setEnabled(review.includedCount() > 0 && !m_isWaiting);
}

} // namespace quillane
