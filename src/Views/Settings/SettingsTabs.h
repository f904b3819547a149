#pragma once
#include <QTabBar>

namespace quillane {

// The tabs of the settings: a symbol above a word. Arrows move among them; assistive tools meet a list of tabs.
class SettingsTabs : public QTabBar {
    Q_OBJECT
  public:
    explicit SettingsTabs(QWidget* parent = nullptr);

    void add(const QString& symbol, const QString& words);
    QString symbol(int index) const { return tabData(index).toString(); }

  protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void paintTab(QPainter& painter, int index) const;
    void paintGround(QPainter& painter, int index) const;
};

} // namespace quillane
