#include "Panes/SelectionSummary.h"
#include "Components/Label.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/PushButton.h"
#include "Components/TextStyle.h"
#include "Components/ToolbarRow.h"
#include <QVBoxLayout>

namespace quillane {

namespace {

const QString kWarningSymbol = QStringLiteral("exclamationmark.triangle");

} // namespace

SelectionSummary::SelectionSummary(const QString& listName, QWidget* parent)
    : QWidget(parent)
    , m_toolbar(new ToolbarRow)
    , m_heading(new Label({}, TextStyle::detailTitle()))
    , m_stats(new StatGrid)
    , m_note(new Note(kWarningSymbol, {}, Tint::Orange))
    , m_remove(
          new PushButton({}, QStringLiteral("trash"), PushButton::Role::Destructive, PushButton::Size::Sheet))
    , m_list(new SummaryList(listName)) {
    m_note->hide();
    m_remove->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(m_remove, &QPushButton::clicked, this, &SelectionSummary::removeWanted);
    auto* const content = new QVBoxLayout;
    content->setContentsMargins(16, 16, 16, 16);
    content->setSpacing(12);
    content->addWidget(m_heading);
    content->addWidget(m_note);
    content->addWidget(new Panel(std::nullopt, m_stats));
    content->addWidget(m_remove);
    content->addWidget(m_list, 1);
    content->addStretch(0);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_toolbar);
    column->addLayout(content, 1);
}

void SelectionSummary::setContent(const Content& content) {
    m_toolbar->setTitle(content.columnTitle);
    m_heading->setText(content.heading);
    m_stats->setStats(content.stats);
    m_note->setVisible(content.note.has_value());
    m_note->setContent(kWarningSymbol, content.note.value_or(QString()), Tint::Orange);
    m_remove->setLabel(content.remove);
    m_remove->setEnabled(content.canRemove);
    m_list->setRows(content.rows);
}

} // namespace quillane
