#pragma once
#include <QProgressBar>

namespace quillane {

// A thin bar without text: 120 wide in the status line, 360 in a sheet. Value and range are those of
// QProgressBar, so assistive tools read them. Give it an accessible name.
class ProgressBar : public QProgressBar {
    Q_OBJECT
  public:
    explicit ProgressBar(int width = 120, int height = 6, QWidget* parent = nullptr);

    // How much of `bar` is done, 0 to 1; 0 while its range is empty.
    static double shareOf(const QProgressBar& bar);

    QSize sizeHint() const override { return size(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace quillane
