#pragma once
#include "Bytes.h"
#include "Panes/SelectionSummary.h"
#include <QString>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// The pane for several selected rows of any section but applications. removeWanted() asks for their removal.
class BulkSummary : public SelectionSummary {
    Q_OBJECT
  public:
    using Rows = std::vector<std::pair<QString, Bytes>>; // label and size
    explicit BulkSummary(QWidget* parent = nullptr);

    using QWidget::show;
    // `noun` is what one row is, in lower case and without an article: "dead app". `canRemove` is false when none
    // of them can go.
    void show(const std::string& noun, const Rows& rows, const std::optional<QString>& note = std::nullopt,
              bool canRemove = true);

    static Bytes total(const Rows& rows);
};

} // namespace quillane
