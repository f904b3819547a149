#pragma once
#include <QLayout>
#include <memory>
#include <vector>

namespace quillane {

// One row from the left; what does not fit goes on in the next. Hidden widgets take no room.
class FlowLayout : public QLayout {
  public:
    // `spacing` stands between neighbours and between rows.
    explicit FlowLayout(QWidget* parent, int spacing);
    ~FlowLayout() override;

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

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

} // namespace quillane
