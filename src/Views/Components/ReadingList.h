#pragma once
#include <QListView>

namespace quillane {

// A list whose rows are read and never selected; the keys move among them. Assistive tools meet a list of rows that
// can be given the focus, and that is all.
class ReadingList : public QListView {
    Q_OBJECT
  public:
    explicit ReadingList(QWidget* parent = nullptr);

    void reset() override;

  protected:
    void rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) override;
};

} // namespace quillane
