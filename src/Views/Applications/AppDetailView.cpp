#include "Applications/AppDetailView.h"
#include "AppLibrary.h"
#include "Applications/AppActions.h"
#include "Applications/AppWords.h"
#include "Components/AppIcon.h"
#include "Components/Badge.h"
#include "Components/DetailHeader.h"
#include "Components/DetailRow.h"
#include "Components/FlowLayout.h"
#include "Components/Label.h"
#include "Components/ListRow.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/ProtectedMark.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Components/Spinner.h"
#include "Components/StatGrid.h"
#include "Components/TextStyle.h"
#include "Components/ToolTipText.h"
#include "Formatting.h"
#include "Workspace.h"
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quillane {

namespace {

constexpr int kIconSide = 56;

QWidget* measuringLine() {
    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(new Spinner(16));
    row->addWidget(new Label(QStringLiteral("Measuring…"), TextStyle::bodySecondary()));
    row->addStretch();
    return line;
}

ListRow* leftoverRow(const LeftoverItem& item) {
    auto* const row =
        new ListRow(item.requiresAdmin ? QStringLiteral("lock.fill") : QStringLiteral("doc"),
                    shownName(item.url.lastPathComponent()), AppDetailView::leftoverSubtitle(item),
                    words(Formatting::byteCount(item.bytes)));
    setToolTipText(*row, shownName(item.url.path()));
    if (item.requiresAdmin) {
        row->setSymbolHelp(DetailPane::lockHelp());
    }
    return row;
}

} // namespace

AppDetailView::AppDetailView(AppLibrary& library, QWidget* parent)
    : DetailPane(QStringLiteral("Uninstall"), QStringLiteral("Application details"), parent)
    , m_library(library)
    , m_icon(new AppIcon(kIconSide))
    , m_header(new DetailHeader(m_icon, {})) {
    removeButton()->setToolTip(QStringLiteral("System apps cannot be removed"));
    removeButton()->setAccessibleDescription(removeButton()->toolTip());
    blocks()->addLayout(makeHead());
    blocks()->addWidget(makeChips());
    makeFootprint();
    makeDetails();
}

QLayout* AppDetailView::makeHead() {
    m_protected = new ProtectedMark(20);
    auto* const row = new QHBoxLayout;
    row->addWidget(m_header, 1);
    row->addWidget(m_protected, 0, Qt::AlignVCenter);
    return row;
}

QWidget* AppDetailView::makeChips() {
    m_architecture = new Badge({}, {});
    m_store = new Badge(QStringLiteral("App Store"), QStringLiteral("bag.fill"));
    m_source = new Badge({}, {});
    auto* const chips = new QWidget;
    auto* const row = new FlowLayout(chips, 6);
    for (auto* const chip : {m_architecture, m_store, m_source}) {
        row->addWidget(chip);
    }
    return chips;
}

void AppDetailView::makeFootprint() {
    m_footprint = new Panel(QStringLiteral("Disk Footprint"));
    m_measuring = measuringLine();
    m_stats = new StatGrid;
    m_rosettaNote = new Note(
        QStringLiteral("info.circle"),
        QStringLiteral("This app has no Apple Silicon build and runs through Rosetta 2 translation."));
    makeCleanCache();
    auto* const content = new QVBoxLayout; // leaves no gap where one of them is hidden
    content->setSpacing(12);
    for (auto* const widget :
         std::initializer_list<QWidget*>{m_measuring, m_stats, m_rosettaNote, m_cleanCache}) {
        content->addWidget(widget);
    }
    m_footprint->contentLayout()->addLayout(content);
    blocks()->addWidget(m_footprint);
}

void AppDetailView::makeCleanCache() {
    m_cleanCache = new PushButton({}, QStringLiteral("sparkles"));
    m_cleanCache->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_cleanCache->setToolTip(
        QStringLiteral("Trash caches, logs and saved window state. Settings and user data are untouched."));
    m_cleanCache->setAccessibleDescription(m_cleanCache->toolTip());
    connect(m_cleanCache, &QPushButton::clicked, this, &AppDetailView::cleanCache);
}

void AppDetailView::makeDetails() {
    m_bundleID = new DetailRow(QStringLiteral("Bundle ID"), {});
    m_location = new DetailRow(QStringLiteral("Location"), {});
    m_lastUsed = new DetailRow(QStringLiteral("Last Used"), {});
    m_minimumSystem = new DetailRow(QStringLiteral("Minimum macOS"), {});
    m_details = new Panel(QStringLiteral("Details"));
    for (auto* const row : {m_bundleID, m_location, m_lastUsed, m_minimumSystem}) {
        m_details->addRow(row);
    }
    blocks()->addWidget(m_details);
}

void AppDetailView::show(const InstalledApp& app) {
    if (m_url != app.url) {
        scrollToTop();
    }
    m_url = app.url;
    showHead(app);
    showFootprint(app);
    showCleanCache(app);
    removeButton()->setEnabled(AppActions::canUninstall(m_library, app));
    showDetails(app);
    showSupportFiles(app.leftovers);
}

void AppDetailView::showHead(const InstalledApp& app) {
    m_icon->setURL(app.url);
    m_header->setTexts(
        shownName(app.name),
        QStringLiteral("Version %1 (%2)").arg(shownName(app.version), shownName(app.buildVersion)));
    m_architecture->setContent(words(rawValue(app.architecture)),
                               AppWords::architectureSymbol(app.architecture),
                               AppWords::architectureTint(app.architecture));
    m_store->setVisible(app.isMacAppStore);
    m_protected->setVisible(m_library.isProtected(app.url));
    m_source->setContent(words(rawValue(app.source)), QStringLiteral("internaldrive"), Tint::Secondary);
}

void AppDetailView::showFootprint(const InstalledApp& app) {
    m_measuring->setVisible(!app.isMeasured);
    m_stats->setVisible(app.isMeasured);
    m_stats->setStats({{QStringLiteral("Total"), words(Formatting::byteCount(app.totalBytes())), true},
                       {QStringLiteral("Bundle"), words(Formatting::byteCount(app.bundleBytes))},
                       {QStringLiteral("Support Files"), words(Formatting::byteCount(app.leftoverBytes()))}});
    m_rosettaNote->setVisible(app.architecture == Architecture::intel);
}

// While it is being measured nobody knows yet what there is to clean.
void AppDetailView::showCleanCache(const InstalledApp& app) {
    const Bytes bytes = m_library.reclaimableCacheBytes(app);
    m_cleanCache->setVisible(app.isMeasured);
    m_cleanCache->setEnabled(bytes > 0);
    m_cleanCache->setLabel(bytes > 0 ? AppActions::cleanCacheTitle(bytes)
                                     : QStringLiteral("No Cache to Clean"));
}

void AppDetailView::reveal() {
    if (m_url) {
        m_library.platform().workspace.reveal({*m_url});
    }
}

void AppDetailView::askToRemove() {
    const auto app = m_library.appWithID(m_url);
    if (app && AppActions::canUninstall(m_library, *app)) {
        emit removalWanted(m_library.removalForApps({*app}));
    }
}

void AppDetailView::cleanCache() {
    if (const auto app = m_library.appWithID(m_url)) {
        emit removalWanted(m_library.removalForCache(*app));
    }
}

void AppDetailView::showDetails(const InstalledApp& app) {
    m_bundleID->setValue(AppWords::orDash(app.bundleIdentifier));
    m_location->setValue(shownName(app.url.deletingLastPathComponent().path()));
    m_lastUsed->setValue(AppWords::lastUsed(app.lastUsed, m_library.platform().clock));
    m_minimumSystem->setValue(AppWords::orDash(app.minimumSystemVersion));
}

void AppDetailView::showSupportFiles(const std::vector<LeftoverItem>& leftovers) {
    if (m_leftovers == leftovers) {
        return;
    }
    m_leftovers = leftovers;
    delete std::exchange(m_supportFiles, nullptr);
    if (leftovers.empty()) {
        return;
    }
    m_supportFiles = new Panel(
        words("Support Files (" + Formatting::number(static_cast<std::int64_t>(leftovers.size())) + ")"));
    for (const auto& item : leftovers) {
        m_supportFiles->addRow(leftoverRow(item));
    }
    blocks()->addWidget(m_supportFiles);
}

QString AppDetailView::leftoverSubtitle(const LeftoverItem& item) {
    const QString category = words(item.category);
    return item.confidence == LeftoverItem::Confidence::medium ? category + QStringLiteral(", name match")
                                                               : category;
}

std::vector<const Badge*> AppDetailView::chips() const {
    std::vector<const Badge*> shown;
    for (const Badge* const chip : {m_architecture, m_store, m_source}) {
        if (!chip->isHidden()) {
            shown.push_back(chip);
        }
    }
    return shown;
}

std::vector<const DetailRow*> AppDetailView::details() const {
    return {m_bundleID, m_location, m_lastUsed, m_minimumSystem};
}

} // namespace quillane
