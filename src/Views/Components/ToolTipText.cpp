#include "Components/ToolTipText.h"
#include <QWidget>

namespace quillane {

QString toolTipText(const QString& plain) {
    return plain.isEmpty() ? QString()
                           : QStringLiteral("<span style=\"white-space: pre-wrap\">") +
                                 plain.toHtmlEscaped() + QStringLiteral("</span>");
}

void setToolTipText(QWidget& widget, const QString& plain) {
    widget.setToolTip(toolTipText(plain));
    widget.setAccessibleDescription(plain);
}

} // namespace quillane
