#pragma once
#include "Components/Card.h"
#include <QVBoxLayout>
#include <optional>

namespace quillane {

class Label;

// A card with an optional heading above its content.
class Panel : public Card {
    Q_OBJECT
  public:
    // `content` may be null; it becomes the first widget of contentLayout().
    explicit Panel(const std::optional<QString>& title = std::nullopt, QWidget* content = nullptr,
                   QWidget* parent = nullptr);

    // Below the heading, without spacing of its own.
    QVBoxLayout* contentLayout() const { return m_content; }
    // Adds a row, with a line above it when it is not the first.
    void addRow(QWidget* row);
    // Adds a widget `gap` pixels below the last one (no gap above the first).
    void addSpaced(QWidget* widget, int gap = 12);
    // Lets the content reach so many pixels into the padding at both sides: for lists whose rows keep that
    // distance themselves and need it for their focus ring.
    void setOverhang(int pixels);
    // Null without a title.
    Label* heading() const { return m_heading; }
    void setTitle(const QString& title);

  private:
    QVBoxLayout* m_content = nullptr;
    Label* m_heading = nullptr;
};

} // namespace quillane
