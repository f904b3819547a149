#pragma once
#include "Components/Label.h"

namespace quillane {

// A dot for each page, the current one wider. Assistive tools read "Page 2 of 5".
class PageDots : public Label {
    Q_OBJECT
  public:
    explicit PageDots(int pages, QWidget* parent = nullptr);

    // From 0.
    int page() const { return m_page; }
    void setPage(int page);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    int m_pages;
    int m_page = 0;
};

} // namespace quillane
