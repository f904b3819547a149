#pragma once
#include "Components/ColumnGround.h"

class QVBoxLayout;

namespace quillane {

// What stands below the tabs: groups of settings, one below the other.
class SettingsPage : public ColumnGround {
    Q_OBJECT
  public:
    explicit SettingsPage(QWidget* parent = nullptr);

  protected:
    // From the top; groups belong to the page.
    void add(QWidget* part);

  private:
    QVBoxLayout* m_column;
};

} // namespace quillane
