#pragma once
#include "RecentUninstall.h"
#include <QWidget>
#include <vector>

class QVBoxLayout;

namespace quillane {

class CardSlot;
class Clock;
class RecentUninstallCard;

// A card for each application that vanished, in the order of the records. A card whose record goes fades; one that
// stays keeps its place in the keyboard's hands.
class RecentUninstallCards : public QWidget {
    Q_OBJECT
  public:
    // `gap` is kept above each card. The clock outlives the cards. Tab meets them after `before`, a widget of the
    // same window.
    RecentUninstallCards(Clock& clock, int gap, QWidget* before, QWidget* parent = nullptr);

    using QWidget::show;
    void show(const std::vector<RecentUninstall>& records);
    // From the top; those that are going are no longer among them.
    std::vector<RecentUninstallCard*> cards() const;

  signals:
    void reviewWanted(const quillane::RecentUninstall& record);
    void dismissWanted(const quillane::RecentUninstall& record);

  private:
    struct Place {
        CardSlot* slot;
        RecentUninstallCard* card;
    };

    Place takeOrMake(std::vector<Place>& before, const RecentUninstall& record);
    Place make();
    void letGo(CardSlot& slot);
    void arrange();
    void orderTab() const;

    Clock& m_clock;
    const int m_gap;
    QWidget* const m_before;
    std::vector<Place> m_places;
    QVBoxLayout* m_column;
};

} // namespace quillane
