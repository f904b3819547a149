#include "Panes/PanePlaceholder.h"
#include "Components/EmptyState.h"
#include "Components/ToolbarRow.h"
#include <QVBoxLayout>

namespace quillane {

PanePlaceholder::PanePlaceholder(const QString& symbol, const QString& title, const QString& sentence,
                                 QWidget* parent)
    : QWidget(parent)
    , m_emptyState(new EmptyState(symbol, title, sentence, EmptyState::kDetailWidth)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(new ToolbarRow);
    column->addWidget(m_emptyState, 1);
}

} // namespace quillane
