#pragma once
#include "Onboarding/Slide.h"
#include <QWidget>
#include <vector>

class QVBoxLayout;

namespace quillane {

class FeatureChip;
class Label;
class Paragraph;

// One page of the welcome in the middle of its room: the symbol in a tile or the program's mark, title, sentences,
// and where asked for a chip for each category of things that can be removed, which come one after the other each
// time the page is shown.
class SlideView : public QWidget {
    Q_OBJECT
  public:
    explicit SlideView(Slide slide, bool showFeatureRow = false, bool showMark = false,
                       QWidget* parent = nullptr);

    // What it is made for.
    static constexpr int kWidth = 680;

    // Seconds until the first chip comes, and from each to the next.
    static constexpr double kFirstChip = 0.55;
    static constexpr double kNextChip = 0.08;

    const Slide& slide() const { return m_slide; }
    bool showFeatureRow() const { return m_showFeatureRow; }
    bool showMark() const { return m_showMark; }
    // Whether it has been shown, and not been hidden since.
    bool appeared() const { return m_appeared; }
    Label* title() const { return m_title; }
    Paragraph* body() const { return m_body; }
    const std::vector<FeatureChip*>& chips() const { return m_chips; } // none without the feature row

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    QWidget* makePicture() const;
    QWidget* makeFeatureRow();

    Slide m_slide;
    bool m_showFeatureRow;
    bool m_showMark;
    bool m_appeared = false;
    Label* m_title;
    Paragraph* m_body;
    std::vector<FeatureChip*> m_chips;
};

} // namespace quillane
