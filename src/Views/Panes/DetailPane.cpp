#include "Panes/DetailPane.h"
#include "Components/PaneScroll.h"
#include "Components/PushButton.h"
#include "Components/ToolbarRow.h"
#include <QScrollBar>
#include <QVBoxLayout>

namespace quillane {

DetailPane::DetailPane(const QString& removeLabel, const QString& name, QWidget* parent, RemoveButton place,
                       PushButton* first)
    : QWidget(parent)
    , m_toolbar(new ToolbarRow)
    , m_reveal(new PushButton(QStringLiteral("Reveal in Finder"), QStringLiteral("folder")))
    , m_remove(new PushButton(removeLabel, QStringLiteral("trash"), PushButton::Role::Destructive,
                              place == RemoveButton::InToolbar ? PushButton::Size::Regular
                                                               : PushButton::Size::Sheet))
    , m_blocks(new QVBoxLayout) {
    if (first != nullptr) {
        m_toolbar->addControl(first);
    }
    m_toolbar->addControl(m_reveal);
    if (place == RemoveButton::InToolbar) {
        m_toolbar->addControl(m_remove);
        m_toolbar->setShrinking(m_reveal);
    } else {
        m_remove->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }
    connect(m_reveal, &QPushButton::clicked, this, [this] { reveal(); });
    connect(m_remove, &QPushButton::clicked, this, [this] { askToRemove(); });

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

QString DetailPane::lockHelp() {
    return QStringLiteral("Needs admin rights to remove");
}

void DetailPane::scrollToTop() {
    m_scroll->verticalScrollBar()->setValue(0);
}

} // namespace quillane
