#pragma once
#include "Components/Card.h"
#include "Components/Tint.h"

class QHBoxLayout;

namespace quillane {

class Label;
class PushButton;

// A card that tells one thing and offers what can be done about it. Title and sentence wrap, they never elide.
class ActionCard : public Card {
    Q_OBJECT
  public:
    ActionCard(const QString& symbol, Tint tint, QWidget* parent = nullptr);

    void setTexts(const QString& title, const QString& sentence);
    Label* title() const { return m_title; }
    Label* sentence() const { return m_sentence; }
    QString symbol() const { return m_symbol; }

  protected:
    // At the right, in the order they are added.
    void addButton(PushButton* button);

  private:
    QString m_symbol;
    QHBoxLayout* m_row;
    Label* m_title;
    Label* m_sentence;
};

} // namespace quillane
