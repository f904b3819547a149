#pragma once
#include <QWidget>
#include <vector>

class QGridLayout;

namespace quillane {

class Stat;

// Statistics in two equal columns, row by row in list order; with an odd count the last row holds one.
class StatGrid : public QWidget {
    Q_OBJECT
  public:
    struct Entry {
        QString label;
        QString value;
        bool emphasized = false;
    };
    explicit StatGrid(const std::vector<Entry>& stats = {}, QWidget* parent = nullptr);

    // Keeps the cells that are there, so that a changing figure does not flicker.
    void setStats(const std::vector<Entry>& stats);
    const std::vector<Stat*>& cells() const { return m_cells; }
    int rowCount() const;

  private:
    QGridLayout* m_grid;
    std::vector<Stat*> m_cells;
};

} // namespace quillane
