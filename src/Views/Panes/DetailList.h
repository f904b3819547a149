#pragma once
#include "FileURL.h"
#include "Panes/PaneList.h"
#include <QString>
#include <vector>

namespace quillane {

class DetailListModel;

// A list of files in a panel of a pane: symbol, name over a second line, and size. The current row stays with its
// file when the list is filled anew.
class DetailList : public PaneList {
    Q_OBJECT
  public:
    struct Row {
        FileURL url; // identity
        QString symbol;
        QString title;
        QString subtitle;
        QString size;
        bool isProtected = false; // bears the mark of what stays
        QString symbolHelp = {};  // what the symbol tells beyond the texts; empty for nothing
        friend bool operator==(const Row&, const Row&) = default;
    };
    enum Role { SymbolRole = Qt::UserRole, SubtitleRole, SizeRole, ProtectedRole, SymbolHelpRole };

    // `name` is what assistive tools call the list.
    explicit DetailList(const QString& name, QWidget* parent = nullptr);

    void setRows(std::vector<Row> rows);

  protected:
    int rowHeight() const override;

  private:
    DetailListModel* m_model;
};

} // namespace quillane
