#include "Components/Scrim.h"
#include "Components/Tokens.h"
#include <QEvent>
#include <QPainter>

namespace quillane {

Scrim::Scrim(QWidget* window)
    : QWidget(window) {
    setAttribute(Qt::WA_TransparentForMouseEvents); // the sheet's modality keeps clicks away
    setGeometry(window->rect());
    window->installEventFilter(this);
    raise();
    show();
}

void Scrim::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Tokens::current().scrim);
}

bool Scrim::eventFilter(QObject* object, QEvent* event) {
    if (object == parent()) {
        if (event->type() == QEvent::Resize) {
            setGeometry(parentWidget()->rect());
        } else if (event->type() == QEvent::ChildAdded) {
            raise();
        }
    }
    return QWidget::eventFilter(object, event);
}

} // namespace quillane
