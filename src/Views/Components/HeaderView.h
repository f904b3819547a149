#pragma once
#include <QHeaderView>

namespace quillane {

// The header of a TableView: 28 pixels and a line, then 4 blank ones.
class HeaderView : public QHeaderView {
    Q_OBJECT
  public:
    explicit HeaderView(QWidget* parent = nullptr);

    static constexpr int kHeight = 28;
    static constexpr int kBlank = 4;

    QSize sizeHint() const override;

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void paintGround(const QRect& rect);
};

} // namespace quillane
