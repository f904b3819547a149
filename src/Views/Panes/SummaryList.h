#pragma once
#include "Bytes.h"
#include "Components/Card.h"
#include "Components/ReadingList.h"
#include "FileURL.h"
#include <QString>
#include <optional>
#include <vector>

namespace quillane {

class SummaryListModel;

// The list in a pane for several selected rows: a card with a line for each, largest first. It is as high as
// its rows, scrolls within itself where they do not fit, and holds thousands of rows at no cost.
class SummaryList : public Card {
    Q_OBJECT
  public:
    struct Row {
        QString label;
        Bytes bytes = 0;
        std::optional<FileURL> icon; // whose icon stands before the label; none: no icon in the whole list
        friend bool operator==(const Row&, const Row&) = default;
    };
    // `name` is what assistive tools call the list.
    explicit SummaryList(const QString& name, QWidget* parent = nullptr);
    ~SummaryList() override;

    // In any order; rows of equal size keep theirs.
    void setRows(const std::vector<Row>& rows);
    ReadingList* list() const { return m_list; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  private:
    SummaryListModel* m_model;
    ReadingList* m_list;
};

} // namespace quillane
