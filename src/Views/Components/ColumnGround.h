#pragma once
#include <QWidget>

namespace quillane {

// A widget that fills itself with one of the grounds of the window.
class ColumnGround : public QWidget {
    Q_OBJECT
  public:
    enum class Ground { Page, Base, Sidebar };
    explicit ColumnGround(Ground ground, QWidget* parent = nullptr);

    void setGround(Ground ground);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Ground m_ground;
};

} // namespace quillane
