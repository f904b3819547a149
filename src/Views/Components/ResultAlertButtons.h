#pragma once
#include <QWidget>
#include <functional>
#include <vector>

namespace quillane {

class PushButton;

// The buttons under the summary of a finished operation: "Grant Full Disk Access…" when the lack of it was
// the reason of any failure, and always "OK".
class ResultAlertButtons : public QWidget {
    Q_OBJECT
  public:
    // `anyAccessDenied`: whether any failure of the report has isAccessDenied. The first button calls
    // `openSettings` and then `dismiss`, the second `dismiss`. `dismiss` may destroy this widget.
    ResultAlertButtons(bool anyAccessDenied, const std::function<void()>& openSettings,
                       const std::function<void()>& dismiss, QWidget* parent = nullptr);

    const std::vector<PushButton*>& buttons() const { return m_buttons; }

  private:
    std::vector<PushButton*> m_buttons;
};

} // namespace quillane
