#include "WindowActivation.h"
#include <QWindow>

namespace quillane::WindowActivation {

// Here whoever clicks a notification has brought the program to the front already.
void activate(QWindow& window, const std::string& /*token*/) {
    window.raise();
    window.requestActivate();
}

} // namespace quillane::WindowActivation
