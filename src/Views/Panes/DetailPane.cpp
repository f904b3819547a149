#include "Panes/DetailPane.h"
#include "Components/PushButton.h"
#include "Components/ToolbarRow.h"
#include "Panes/PaneScroll.h"
#include <QScrollBar>
#include <QVBoxLayout>

namespace quillane {

DetailPane::DetailPane(const QString& removeLabel, const QString& name, QWidget* parent)
    : QWidget(parent)
    , m_toolbar(new ToolbarRow)
    , m_reveal(new PushButton(QStringLiteral("Reveal in Finder"), QStringLiteral("folder")))
    , m_remove(new PushButton(removeLabel, QStringLiteral("trash"), PushButton::Role::Destructive))
    , m_blocks(new QVBoxLayout) {
    makeToolbar();

    auto* const content = new QWidget;
    auto* const padded = new QVBoxLayout(content);
    padded->setContentsMargins(16, 16, 16, 16);
    padded->setSpacing(0);
    padded->addLayout(m_blocks);
    padded->addStretch(1);
    m_blocks->setSpacing(12);

    m_scroll = new PaneScroll(name, content);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_toolbar);
    column->addWidget(m_scroll, 1);
}

void DetailPane::makeToolbar() {
    m_toolbar->addControl(m_reveal);
    m_toolbar->addControl(m_remove);
    m_toolbar->setShrinking(m_reveal);
    connect(m_reveal, &QPushButton::clicked, this, [this] { reveal(); });
    connect(m_remove, &QPushButton::clicked, this, [this] { askToRemove(); });
}

QString DetailPane::lockHelp() {
    return QStringLiteral("Needs admin rights to remove");
}

void DetailPane::scrollToTop() {
    m_scroll->verticalScrollBar()->setValue(0);
}

} // namespace quillane
