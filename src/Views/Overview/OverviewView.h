#pragma once
#include "Components/ColumnGround.h"
#include "NotificationCenter.h"
#include "Review/SweepPreviewSheet.h"
#include <QPointer>
#include <functional>
#include <vector>

class QScrollArea;
class QVBoxLayout;

namespace quillane {

class AccessNotice;
class AppLibrary;
class CardSlot;
class CategoryRow;
class Hero;
class LibraryObserver;
class Note;
class PutBackCard;
class RecentUninstallCards;
struct ContentState;
struct RecentUninstall;

// How much can come back now, four categories to tick, and the button that leads to the review. It changes
// nothing on disk by itself.
class OverviewView : public ColumnGround {
    Q_OBJECT
  public:
    // Both outlive the view.
    OverviewView(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);
    ~OverviewView() override;

    // Opens the review of all that is ticked; without effect when there is nothing to review. While another sheet is
    // open or waits, it waits for its end.
    void openReview();

    Hero* hero() const { return m_hero; }
    Note* grantedNotice() const { return m_granted; }
    const std::vector<CategoryRow*>& rows() const { return m_rows; }
    AccessNotice* accessNotice() const { return m_accessNotice; }
    PutBackCard* putBackCard() const { return m_putBack; }
    RecentUninstallCards* recentUninstalls() const { return m_recent; }
    SweepPreviewSheet* review() const { return m_review; } // null while it is closed
    // The same for what an application left that vanished.
    SweepPreviewSheet* leftoverReview() const { return m_leftoverReview; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void makeCards(QVBoxLayout* column);
    QWidget* makeCategories();
    CategoryRow* makeRow(SweepCategory category);
    void render();
    void renderRow(CategoryRow& row) const;
    void renderGranted();
    void renderAccessNotice();
    void renderPutBack();
    bool isReviewing() const;
    bool isHeldBack();
    void keep(std::function<void()> open);
    void renderWaiting();
    void receiveReview();
    void reviewLeftovers(const RecentUninstall& record);
    void tick(SweepCategory category, bool isOn);
    void grantAccess() const;

    AppLibrary& m_library;
    ContentState& m_state;
    Hero* m_hero;
    Note* m_granted;
    RecentUninstallCards* m_recent;
    std::vector<CategoryRow*> m_rows;
    AccessNotice* m_accessNotice;
    PutBackCard* m_putBack;
    CardSlot* m_grantedSlot;
    CardSlot* m_accessSlot;
    CardSlot* m_putBackSlot;
    LibraryObserver* m_observer = nullptr;
    LibraryObserver* m_waitingObserver = nullptr;
    std::function<void()>
        m_waiting; // opens the review that was asked for when none could open; empty for none
    QPointer<SweepPreviewSheet> m_review;
    QPointer<SweepPreviewSheet> m_leftoverReview;
    NotificationCenter::Subscription m_openPreview;
};

} // namespace quillane
