#include "Components/StatGrid.h"
#include "Components/Stat.h"
#include <QGridLayout>

namespace quillane {

StatGrid::StatGrid(const std::vector<Entry>& stats, QWidget* parent)
    : QWidget(parent)
    , m_grid(new QGridLayout(this)) {
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setHorizontalSpacing(16);
    m_grid->setVerticalSpacing(12);
    m_grid->setColumnStretch(0, 1);
    m_grid->setColumnStretch(1, 1);
    setStats(stats);
}

void StatGrid::setStats(const std::vector<Entry>& stats) {
    while (m_cells.size() > stats.size()) {
        delete m_cells.back();
        m_cells.pop_back();
    }
    for (std::size_t i = 0; i < stats.size(); ++i) {
        const Entry& entry = stats[i];
        if (i < m_cells.size()) {
            m_cells[i]->setLabel(entry.label);
            m_cells[i]->setValue(entry.value);
            m_cells[i]->setEmphasized(entry.emphasized);
            continue;
        }
        m_cells.push_back(new Stat(entry.label, entry.value, entry.emphasized));
        m_grid->addWidget(m_cells.back(), static_cast<int>(i) / 2, static_cast<int>(i) % 2);
    }
}

int StatGrid::rowCount() const {
    return static_cast<int>(m_cells.size() + 1) / 2;
}

} // namespace quillane
