#include "Panes/BulkSummary.h"
#include "Components/ShownText.h"
#include "Formatting.h"

namespace quillane {

namespace {

// For nouns that this program names: plain letters.
std::string inTitleCase(std::string noun) {
    bool begins = true;
    for (char& letter : noun) {
        if (begins && letter >= 'a' && letter <= 'z') {
            letter = static_cast<char>(letter - 'a' + 'A');
        }
        begins = letter == ' ';
    }
    return noun;
}

} // namespace

BulkSummary::BulkSummary(QWidget* parent)
    : SelectionSummary(QStringLiteral("Selected rows"), parent) {}

void BulkSummary::show(const std::string& noun, const Rows& rows, const std::optional<QString>& note,
                       bool canRemove) {
    const auto count = static_cast<std::int64_t>(rows.size());
    Content content;
    content.columnTitle = words(Formatting::counted(count, inTitleCase(noun)));
    content.heading = words(Formatting::counted(count, noun)) + QStringLiteral(" selected");
    content.stats = {
        {QStringLiteral("Combined Size"), words(Formatting::byteCount(total(rows))), true},
        {QStringLiteral("Rows"), words(Formatting::number(count))},
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
