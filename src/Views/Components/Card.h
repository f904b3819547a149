#pragma once
#include <QWidget>

namespace quillane {

// A rounded surface that lies on the page. It has no layout of its own.
class Card : public QWidget {
    Q_OBJECT
  public:
    enum class Kind { Plain, Hero };
    explicit Card(QWidget* parent = nullptr, Kind kind = Kind::Plain);

    static constexpr int kRadius = 12;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Kind m_kind;
};

} // namespace quillane
