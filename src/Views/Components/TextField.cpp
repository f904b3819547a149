#include "Components/TextField.h"
#include <QKeyEvent>

namespace quillane {

// The base claims the key whether or not it can do anything with it.
bool TextField::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && !isUndoAvailable() &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Undo)) {
        event->ignore();
        return false;
    }
    return QLineEdit::event(event);
}

} // namespace quillane
