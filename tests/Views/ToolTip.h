#pragma once
#include <QString>
#include <QTextDocument>

namespace quillane {

// What somebody reads who is shown this as a tooltip.
inline QString readIn(const QString& toolTip) {
    if (!Qt::mightBeRichText(toolTip)) {
        return toolTip;
    }
    QTextDocument document;
    document.setHtml(toolTip);
    return document.toPlainText();
}

} // namespace quillane
