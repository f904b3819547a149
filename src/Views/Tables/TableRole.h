#pragma once
#include <QtGlobal>

namespace quillane {

// What a model may tell TableView about a cell beyond Qt's own roles. Of those, DisplayRole is the text,
// DecorationRole a picture of 20 pixels (QPixmap, QImage or QIcon) before it, ToolTipRole the help text,
// TextAlignmentRole (of the header) the side, AccessibleTextRole what is read aloud: give it to every cell
// that is a symbol alone.
enum TableRole : int {
    kSymbolRole = Qt::UserRole + 100, // QString: symbol before the text, in the cell's tint
    kSymbolSideRole,                  // double: how large that symbol is; absent: 15
    kTintRole,                        // int(Tint) of text and symbol; absent: Tint::Text
    kSymbolTintRole,                  // int(Tint) of the symbol alone, where it differs
    kTabularRole,                     // bool: right-aligned, digits of equal width
    kBusyRole,                        // bool: a small spinner in place of the text
    kBadgeRole,                       // bool: the text as a capsule in its tint
    kTrailingSymbolRole,              // QString: symbol behind the text
    kTrailingTintRole,                // int(Tint) of that symbol; absent: Tint::Tertiary
    kTrailingHelpRole,                // QString: tooltip of that symbol
    kFurtherSymbolRole,               // QString: another symbol, behind the first, in its tint
    kFurtherHelpRole,                 // QString: tooltip of that symbol
    kProtectedRole,                   // bool: behind it all the mark of what stays, with its help text
    kElideRole,                       // int(Qt::TextElideMode); absent: at the end
};

} // namespace quillane
