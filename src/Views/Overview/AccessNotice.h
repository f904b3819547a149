#pragma once
#include "Overview/ActionCard.h"

namespace quillane {

// Tells how many paths the system refused since the last scan.
class AccessNotice : public ActionCard {
    Q_OBJECT
  public:
    explicit AccessNotice(QWidget* parent = nullptr);

    void setCount(int count);
    PushButton* grantButton() const { return m_grant; }

  private:
    PushButton* m_grant;
};

} // namespace quillane
