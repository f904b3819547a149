#pragma once
#include "Overview/DatedCard.h"
#include "RecentUninstall.h"

namespace quillane {

class SymbolButton;

// An application that vanished, what it left, and the ways to look at that or to forget about it.
class RecentUninstallCard : public DatedCard {
    Q_OBJECT
  public:
    // The clock outlives the card.
    explicit RecentUninstallCard(Clock& clock, QWidget* parent = nullptr);

    void setRecord(const RecentUninstall& record);
    const RecentUninstall& record() const { return m_record; }

    PushButton* reviewButton() const { return m_review; } // hidden when nothing was left
    PushButton* dismissButton() const { return m_dismiss; }
    SymbolButton* closeButton() const { return m_close; }

  signals:
    void reviewWanted();
    void dismissWanted();

  protected:
    void tell() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QString titleWith(const QString& name) const;
    QString sentenceOfRecord() const;

    RecentUninstall m_record;
    PushButton* m_review;
    PushButton* m_dismiss;
    SymbolButton* m_close;
};

} // namespace quillane
