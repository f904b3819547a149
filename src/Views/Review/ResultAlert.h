#pragma once
#include "Components/Sheet.h"
#include "UninstallerReport.h"
#include <functional>

namespace quillane {

class Label;
class ResultAlertButtons;

// How an operation ended, in words, over the window that it belongs to.
class ResultAlert : public Sheet {
    Q_OBJECT
  public:
    ResultAlert(const QString& title, const QString& message, bool anyAccessDenied,
                const std::function<void()>& openSettings, QWidget* over);

    // The alert of a finished put back; it deletes itself when it closes.
    static ResultAlert* presentPutBack(const Uninstaller::Report& report,
                                       const std::function<void()>& openSettings, QWidget* over);

    Label* title() const { return m_title; }
    Label* message() const { return m_message; }
    ResultAlertButtons* buttons() const { return m_buttons; }

  private:
    Label* m_title;
    Label* m_message;
    ResultAlertButtons* m_buttons;
};

} // namespace quillane
