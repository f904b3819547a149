#include "Components/ToolTipText.h"

namespace quillane {

QString toolTipText(const QString& plain) {
    return plain.isEmpty() ? QString()
                           : QStringLiteral("<span style=\"white-space: pre-wrap\">") +
                                 plain.toHtmlEscaped() + QStringLiteral("</span>");
}

} // namespace quillane
