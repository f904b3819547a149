#pragma once
#include <QWidget>

namespace quillane {

class Label;
class PushButton;
class SweepReviewList;
class SweepReviewModel;

// The first stage of the review sheet: everything that would go, to tick and untick, and the button that
// starts it.
class SweepReviewStage : public QWidget {
    Q_OBJECT
  public:
    // The model outlives the stage.
    explicit SweepReviewStage(SweepReviewModel& model, QWidget* parent = nullptr);

    SweepReviewList* list() const { return m_list; }
    Label* headline() const { return m_headline; }
    Label* explanation() const { return m_explanation; }
    Label* count() const { return m_count; }
    Label* trashNote() const { return m_trashNote; } // hidden unless the Trash is ticked
    PushButton* cancelButton() const { return m_cancel; }
    PushButton* mainButton() const { return m_main; }

    // Whether something has to end before this may be confirmed.
    void setWaiting(bool waiting);

  signals:
    void cancelled();
    void confirmed();

  private:
    QWidget* makeHead();
    QWidget* makeFooter();
    void render();

    SweepReviewModel& m_model;
    bool m_isWaiting = false;
    SweepReviewList* m_list;
    Label* m_headline;
    Label* m_explanation;
    Label* m_count;
    Label* m_trashNote;
    PushButton* m_cancel;
    PushButton* m_main;
};

} // namespace quillane
