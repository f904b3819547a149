#include "WindowActivation.h"
#import <AppKit/AppKit.h>
#include <QWindow>

namespace quillane::WindowActivation {

// The system lets a program come to the front where its user has just asked for it, and needs no token to know. It may
// still refuse; the window is ordered to the front after the asking, so that it stands there once it does come.
void activate(QWindow& window, const std::string& /*token*/) {
    NSApplication* const application = NSApplication.sharedApplication;
    if (@available(macOS 14.0, *)) {
        [application activate];
    } else {
        [application activateIgnoringOtherApps:YES];
    }
    window.raise();
    window.requestActivate();
}

} // namespace quillane::WindowActivation
