#pragma once
#include <QSplitter>

namespace quillane {

// Columns side by side, parted by a line of one pixel that can be dragged.
class ColumnSplitter : public QSplitter {
    Q_OBJECT
  public:
    explicit ColumnSplitter(QWidget* parent = nullptr);

  protected:
    QSplitterHandle* createHandle() override;
};

} // namespace quillane
