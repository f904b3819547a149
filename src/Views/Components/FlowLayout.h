#pragma once
#include <QLayout>
#include <memory>
#include <vector>

namespace quillane {

// One row from the left, or in the middle; what does not fit goes on in the next. Hidden widgets take no room.
class FlowLayout : public QLayout {
  public:
    // `spacing` stands between neighbours and between rows.
    explicit FlowLayout(QWidget* parent, int spacing);
    ~FlowLayout() override;

    // Each row stands in the middle of the width.
    void setCentred(bool centred);
    // Between rows, in place of what stands between neighbours.
    void setRowSpacing(int spacing);

    void addItem(QLayoutItem* item) override;
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    // As wide as all in one row.
    QSize sizeHint() const override;
    // As wide as the widest.
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

  private:
    // The places of all items, those that are hidden included, which get none.
    std::vector<QRect> places(int width) const;

    bool m_centred = false;
    int m_rowSpacing;
    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

} // namespace quillane
