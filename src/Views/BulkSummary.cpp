#include "BulkSummary.h"
#include "Formatting.h"
#include "ShownText.h"

namespace quillane {

BulkSummary::BulkSummary(QWidget* parent)
    : SelectionSummary(QStringLiteral("Selected rows"), parent) {}

void BulkSummary::show(const QString& title, const Rows& rows, const std::optional<QString>& note,
                       bool canRemove) {
    Content content;
    content.heading = title;
    content.stats = {
        {QStringLiteral("Combined Size"), words(Formatting::byteCount(total(rows))), true},
        {QStringLiteral("Rows"), words(Formatting::number(static_cast<std::int64_t>(rows.size())))},
    };
    content.note = note;
    content.remove = QStringLiteral("Move All to Trash…");
    content.canRemove = canRemove;
    for (const auto& [label, bytes] : rows) {
        content.rows.push_back({label, bytes, std::nullopt});
    }
    setContent(content);
}

Bytes BulkSummary::total(const Rows& rows) {
    return sumOfBytes(rows, [](const auto& row) { return row.second; });
}

} // namespace quillane
