#include "Overview/CategoryRow.h"
#include "Components/CategoryTint.h"
#include "Components/Label.h"
#include "Components/PermanentBadge.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Components/Spinner.h"
#include "Components/Tile.h"
#include "Formatting.h"
#include <QCheckBox>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace quillane {

namespace {

constexpr int kLeastHeight = 70;
constexpr int kFiguresWidth = 104;
constexpr int kSpinner = 16;

std::string_view noun(SweepCategory category) {
    switch (category) {
    case SweepCategory::caches:
        return "app";
    case SweepCategory::developer:
        return "location";
    case SweepCategory::orphans:
        return "dead app";
    case SweepCategory::trash:
    case SweepCategory::apps:
    case SweepCategory::files:
    case SweepCategory::startup:
        break;
    }
    return "item";
}

} // namespace

CategoryRow::CategoryRow(SweepCategory category, QWidget* parent)
    : QWidget(parent)
    , m_category(category)
    , m_box(new QCheckBox)
    , m_title(new Label(words(rawValue(category)), TextStyle::heading()))
    , m_sentence(Label::wrapped(words(description(category)), TextStyle::secondary()))
    , m_size(new Label({}, TextStyle::columnTitle()))
    , m_count(new Label({}, TextStyle::secondary()))
    , m_spinner(new Spinner(kSpinner))
    , m_blocked(new Label(QStringLiteral("Can't see inside the Trash"), TextStyle::secondary()))
    , m_grant(new PushButton(QStringLiteral("Grant Full Disk Access…"), {}, PushButton::Role::Normal,
                             PushButton::Size::Small)) {
    setMinimumHeight(kLeastHeight);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(16, 11, 16, 11);
    row->setSpacing(12);
    row->addWidget(m_box, 0, Qt::AlignVCenter);
    row->addWidget(new Tile(words(symbol(category)), tintOf(category)), 0, Qt::AlignVCenter);
    row->addWidget(makeTexts(), 1, Qt::AlignVCenter);
    row->addWidget(makeFigures(), 0, Qt::AlignVCenter);
    m_box->setAccessibleDescription(words(description(category)));
    connect(m_box, &QCheckBox::toggled, this, &CategoryRow::toggled);
    connect(m_grant, &QPushButton::clicked, this, &CategoryRow::grantAccessAsked);
}

QWidget* CategoryRow::makeTexts() {
    auto* const heading = new QHBoxLayout;
    heading->setSpacing(8);
    heading->addWidget(m_title);
    if (m_category == SweepCategory::trash) {
        m_permanent = new PermanentBadge;
        heading->addWidget(m_permanent, 0, Qt::AlignVCenter);
    }
    heading->addStretch();

    auto* const texts = new QWidget;
    auto* const column = new QVBoxLayout(texts);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1);
    column->addLayout(heading);
    column->addWidget(m_sentence);
    return texts;
}

QWidget* CategoryRow::makeFigures() {
    m_size->setTabular(true);
    for (auto* const label : {m_size, m_count, m_blocked})
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    m_figures = new QWidget;
    auto* const figures = new QVBoxLayout(m_figures);
    figures->setContentsMargins(0, 0, 0, 0);
    figures->setSpacing(1);
    figures->addWidget(m_size);
    figures->addWidget(m_count);

    m_access = new QWidget;
    auto* const access = new QVBoxLayout(m_access);
    access->setContentsMargins(0, 0, 0, 0);
    access->setSpacing(4);
    access->addWidget(m_blocked);
    access->addWidget(m_grant, 0, Qt::AlignRight);

    auto* const right = new QWidget;
    right->setMinimumWidth(kFiguresWidth);
    auto* const column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_spinner, 0, Qt::AlignRight);
    column->addWidget(m_figures);
    column->addWidget(m_access);
    return right;
}

QString CategoryRow::countText(SweepCategory category, int count) {
    return words(Formatting::counted(count, noun(category)));
}

void CategoryRow::setState(const State& state) {
    m_size->setText(words(Formatting::byteCount(state.bytes)));
    m_count->setText(countText(m_category, state.count));
    m_access->setVisible(state.needsAccess);
    m_spinner->setVisible(!state.needsAccess && !state.isMeasured);
    m_figures->setVisible(!state.needsAccess && state.isMeasured);
    m_box->setEnabled(!state.needsAccess);
    const QSignalBlocker notByTheUser(m_box);
    m_box->setChecked(state.isOn);
    m_box->setAccessibleName(spokenName(state));
}

QString CategoryRow::spokenName(const State& state) const {
    QStringList parts{m_title->text()};
    if (state.needsAccess)
        parts << m_blocked->text();
    else if (state.isMeasured)
        parts << m_size->text();
    if (m_permanent)
        parts << QStringLiteral("permanent");
    return parts.join(QStringLiteral(", "));
}

// Taken, so that the release comes here too.
void CategoryRow::mousePressEvent(QMouseEvent* event) {
    event->setAccepted(event->button() == Qt::LeftButton);
}

void CategoryRow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        m_box->click();
}

} // namespace quillane
