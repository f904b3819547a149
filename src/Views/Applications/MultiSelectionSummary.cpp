#include "Applications/MultiSelectionSummary.h"
#include "Applications/AppActions.h"
#include "Applications/AppWords.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include <algorithm>

namespace quillane {

MultiSelectionSummary::MultiSelectionSummary(QWidget* parent)
    : SelectionSummary(QStringLiteral("Selected applications"), parent) {}

void MultiSelectionSummary::show(const std::vector<InstalledApp>& apps, bool canUninstall) {
    const auto number = [](auto count) {
        return words(Formatting::number(static_cast<std::int64_t>(count)));
    };
    Content content;
    content.columnTitle = number(apps.size()) + QStringLiteral(" Apps");
    content.heading = AppWords::selectedCount(apps.size());
    content.stats = {
        {QStringLiteral("Combined Size"),
         words(Formatting::byteCount(
             sumOfBytes(apps, [](const InstalledApp& app) { return app.totalBytes(); }))),
         true},
        {QStringLiteral("Support Files"),
         words(Formatting::byteCount(
             sumOfBytes(apps, [](const InstalledApp& app) { return app.leftoverBytes(); })))},
    };
    const auto intel = std::ranges::count(apps, Architecture::intel, &InstalledApp::architecture);
    if (intel > 0) {
        content.stats.push_back({QStringLiteral("Intel Only"), number(intel)});
    }
    content.remove = AppActions::uninstallTitle(apps.size());
    content.canRemove = canUninstall;
    for (const auto& app : apps) {
        content.rows.push_back({shownName(app.name), app.totalBytes(), app.url});
    }
    setContent(content);
}

} // namespace quillane
