#include "Gallery.h"
#include "Components/AccessBanner.h"
#include "Components/Badge.h"
#include "Components/ColumnGround.h"
#include "Components/DetailHeader.h"
#include "Components/DetailRow.h"
#include "Components/ElidedLabel.h"
#include "Components/EmptyState.h"
#include "Components/Label.h"
#include "Components/ListRow.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/ProgressBar.h"
#include "Components/ProgressRing.h"
#include "Components/ProtectedMark.h"
#include "Components/PushButton.h"
#include "Components/ResultAlertButtons.h"
#include "Components/Rule.h"
#include "Components/SearchField.h"
#include "Components/SegmentedControl.h"
#include "Components/SidebarView.h"
#include "Components/Spinner.h"
#include "Components/StatGrid.h"
#include "Components/StatusRow.h"
#include "Components/Switch.h"
#include "Components/SymbolButton.h"
#include "Components/SymbolView.h"
#include "Components/Symbols.h"
#include "Components/Tile.h"
#include "Components/Tokens.h"
#include "Components/ToolbarRow.h"
#include "Tables/TableRole.h"
#include "Tables/TableView.h"
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QPainter>
#include <QRadioButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStandardItemModel>

namespace quillane {

namespace {

QHBoxLayout* rowOf(std::initializer_list<QWidget*> widgets, int spacing = 12) {
    auto* row = new QHBoxLayout;
    row->setSpacing(spacing);
    for (QWidget* widget : widgets) {
        row->addWidget(widget, 0, Qt::AlignVCenter);
    }
    row->addStretch();
    return row;
}

QHBoxLayout* buttonStates(const QString& text, const QString& symbol, PushButton::Role role) {
    const auto make = [&] { return new PushButton(text, symbol, role); };
    auto* hovered = make();
    hovered->setAttribute(Qt::WA_UnderMouse);
    auto* pressed = make();
    pressed->setDown(true);
    auto* disabled = make();
    disabled->setEnabled(false);
    return rowOf({make(), hovered, pressed, disabled});
}

QCheckBox* checkBox(const QString& name, Qt::CheckState state, bool enabled = true) {
    auto* box = new QCheckBox;
    box->setAccessibleName(name);
    box->setTristate(state == Qt::PartiallyChecked);
    box->setCheckState(state);
    box->setEnabled(enabled);
    return box;
}

QPixmap sampleIcon(int side, const QColor& color) {
    QPixmap pixmap(2 * side, 2 * side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(2, 2, 2 * side - 4, 2 * side - 4), side * 0.45, side * 0.45);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(side * 0.6, side * 0.6, side * 0.8, side * 0.8));
    return pixmap;
}

struct SampleApp {
    const char* name;
    const char* size;
    const char* used;
    Tint usedTint;
    const char* architecture;
    const char* symbol;
    Tint tint;
    const char* version;
    bool fromStore;
};

constexpr SampleApp kApps[] = {
    {"Harbour VM", "22.61 GB", "2 days ago", Tint::Text, "Apple Silicon", "cpu", Tint::Secondary, "5.2.1",
     false},
    {"Northlight RAW", "14.63 GB", "last week", Tint::Text, "Universal", "checkmark.seal", Tint::Secondary,
     "7.2.1", true},
    {"Tessel Studio", "9.84 GB", "8 months ago", Tint::Orange, "Intel", "arrow.triangle.2.circlepath",
     Tint::Orange, "3.9.4", false},
    {"Meridian Maps with a name that is much too long for its column and goes on", "8.17 GB", "last month",
     Tint::Text, "Universal", "checkmark.seal", Tint::Secondary, "12.0", true},
    {"Quartzo", "412.8 MB", "9 years ago", Tint::Orange, "32-bit Intel", "exclamationmark.triangle",
     Tint::Red, "1.4.2", false},
    {"Kettle", "", "6 days ago", Tint::Text, "Universal", "checkmark.seal", Tint::Secondary, "4.0.1", false},
};

QStandardItem* cell(const QString& text, Tint tint = Tint::Text) {
    auto* item = new QStandardItem(text);
    item->setData(static_cast<int>(tint), kTintRole);
    return item;
}

QStandardItemModel* sampleModel(QObject* parent) {
    auto* model = new QStandardItemModel(parent);
    model->setHorizontalHeaderLabels({"Name", "Size", "Last Used", "Architecture", "Version"});
    model->setHeaderData(1, Qt::Horizontal, int(Qt::AlignRight | Qt::AlignVCenter), Qt::TextAlignmentRole);
    int shade = 20;
    for (const SampleApp& app : kApps) {
        auto* name = cell(app.name);
        name->setData(sampleIcon(20, QColor::fromHsv(shade += 50, 150, 190)), Qt::DecorationRole);
        if (app.fromStore) {
            name->setData("bag.fill", kTrailingSymbolRole);
            name->setData("From the App Store", kTrailingHelpRole);
        }
        auto* size = cell(app.size, QString(app.size).endsWith("GB") ? Tint::Text : Tint::Secondary);
        size->setData(true, kTabularRole);
        size->setData(QString(app.size).isEmpty(), kBusyRole);
        auto* architecture = cell(app.architecture, app.tint);
        architecture->setData(app.symbol, kSymbolRole);
        model->appendRow(
            {name, size, cell(app.used, app.usedTint), architecture, cell(app.version, Tint::Secondary)});
    }
    return model;
}

TableView* sampleTable() {
    auto* table = new TableView("Applications");
    table->setModel(sampleModel(table));
    table->setColumns({{.width = 180, .stretches = true},
                       {.width = 88},
                       {.width = 112},
                       {.width = 132},
                       {.width = 90, .narrowest = 60, .narrowRank = 1}});
    table->header()->setSortIndicator(1, Qt::DescendingOrder);
    return table;
}

QWidget* heading(const QString& text) {
    auto* label = new Label(text, TextStyle::overline());
    label->setContentsMargins(0, 6, 0, 0);
    return label;
}

QWidget* fields() {
    auto* widget = new QWidget;
    auto* kinds = new QComboBox;
    kinds->addItems({"Any kind", "Videos"});
    kinds->setAccessibleName("Kind");
    auto* limit = new QSpinBox;
    limit->setRange(1, 500);
    limit->setPrefix("Below ");
    limit->setSuffix(" GB");
    limit->setAlignment(Qt::AlignRight);
    limit->setAccessibleName("Limit");
    auto* line = new QLineEdit("invoice 2023");
    line->setAccessibleName("What to look for");
    line->setProperty("framed", true);
    auto* row = rowOf({new SearchField, line, kinds, limit});
    row->setContentsMargins(0, 0, 0, 0);
    widget->setLayout(row);
    return widget;
}

QWidget* emptyStates() {
    auto* widget = new QWidget;
    auto* row = new QHBoxLayout(widget);
    row->addWidget(new EmptyState("square.grid.2x2", "No App Selected",
                                  "Pick an app to see its full disk footprint.", EmptyState::kDetailWidth));
    auto* loading = new EmptyState({}, {}, {}, EmptyState::kDetailWidth);
    loading->setLoading("Comparing files", "This can take a while.");
    row->addWidget(loading);
    return widget;
}

} // namespace

std::unique_ptr<QWidget> makeGallery() {
    auto page = std::make_unique<ColumnGround>(ColumnGround::Ground::Page);
    page->setFixedWidth(694);
    auto* column = new QVBoxLayout(page.get());
    column->setContentsMargins(28, 20, 28, 24);
    column->setSpacing(9);
    column->addWidget(heading("BUTTON normal, hover, pressed, disabled"));
    column->addLayout(buttonStates("Put Back", {}, PushButton::Role::Normal));
    column->addLayout(buttonStates("Review", "sparkles", PushButton::Role::Filled));
    column->addLayout(buttonStates("Uninstall", "trash", PushButton::Role::Destructive));
    column->addLayout(buttonStates("Dismiss", {}, PushButton::Role::Plain));
    column->addLayout(buttonStates("Delete for Good", "trash", PushButton::Role::Permanent));
    using Size = PushButton::Size;
    column->addLayout(
        rowOf({new PushButton("Review and Clean", "sparkles", PushButton::Role::Filled, Size::Hero),
               new PushButton("Cancel", {}, PushButton::Role::Normal, Size::Sheet),
               new PushButton("Grant Full Disk Access…", {}, PushButton::Role::Normal, Size::Small),
               new SymbolButton("xmark", "Dismiss"),
               new SymbolButton("folder", "Reveal in Finder", PushButton::Role::Normal, 30)}));
    column->addWidget(heading("CHECK BOX, RADIO, FIELDS"));
    auto* labelled = new QCheckBox("Show protected items");
    auto* radio = new QRadioButton("Newest");
    radio->setChecked(true);
    column->addLayout(
        rowOf({checkBox("Off", Qt::Unchecked), checkBox("On", Qt::Checked),
               checkBox("Some", Qt::PartiallyChecked), checkBox("Off, fixed", Qt::Unchecked, false),
               checkBox("On, fixed", Qt::Checked, false), labelled, radio}));
    column->addWidget(fields());
    auto* on = new Switch("Weekly summary");
    on->setChecked(true);
    auto* fixed = new Switch("Free disk space gets low");
    fixed->setEnabled(false);
    column->addLayout(rowOf({new SegmentedControl("Lens", {"Large & Old", "Screenshots", "Search"}), on,
                             new Switch("Rescan on a schedule"), fixed}));
    column->addWidget(heading("BADGES AND MARKS"));
    using Kind = Badge::Kind;
    column->addLayout(rowOf({new Badge("64", {}, Tint::Secondary, Kind::Capsule),
                             new Badge("3", {}, Tint::Orange, Kind::Capsule), Badge::permanent(),
                             new Badge("Universal", "checkmark.seal"),
                             new Badge("Intel", "arrow.triangle.2.circlepath", Tint::Orange),
                             new Badge("32-bit Intel", "exclamationmark.triangle", Tint::Red),
                             new Badge("OK", {}, Tint::Green, Kind::Capsule),
                             new Badge("Orphaned", {}, Tint::Orange, Kind::Capsule), new ProtectedMark},
                            10));
    column->addLayout(rowOf({new Tile("sparkles", Tint::Caches), new Tile("hammer", Tint::Developer),
                             new Tile("questionmark.folder", Tint::Orphans), new Tile("trash", Tint::Trash),
                             new Tile("square.grid.2x2", Tint::Apps), new Tile("doc.on.doc", Tint::Files),
                             new Tile("power", Tint::Startup, 48), new Spinner(16), new Spinner(28)}));
    auto* bar = new ProgressBar(120);
    bar->setAccessibleName("Measuring");
    bar->setRange(0, 64);
    bar->setValue(38);
    auto* ring = new ProgressRing("sparkles");
    ring->setAccessibleName("Sweep");
    ring->setValue(63);
    column->addLayout(rowOf({bar, new SymbolView("folder", 16), ring}));
    column->addWidget(heading("TABLE"));
    auto* table = sampleTable();
    table->setFixedHeight(32 + 6 * 30);
    table->selectionModel()->select(QItemSelection(table->model()->index(1, 0), table->model()->index(2, 4)),
                                    QItemSelectionModel::Select);
    column->addWidget(table);
    auto* status = new StatusRow;
    status->addBefore(new Spinner(16));
    status->setTexts("14 locations", "69.93 GB", "12.87 GB in sweep");
    column->addWidget(status);
    column->addWidget(heading("NOTES AND BANNER"));
    column->addWidget(new Note(
        "info.circle", "This app has no Apple Silicon build and runs through Rosetta 2 translation."));
    column->addWidget(
        new Note("exclamationmark.triangle",
                 "The program it launches no longer exists, so launchd fails it every time. Safe to "
                 "remove.",
                 Tint::Orange));
    column->addWidget(new Note("checkmark.shield.fill",
                               "Full Disk Access granted. Rescanning the folders that were hidden.",
                               Tint::Green));
    column->addWidget(new AccessBanner([] {}, [] {}));
    column->addWidget(heading("PANELS"));
    column->addWidget(new Panel(std::nullopt, new StatGrid({{"Reclaimable", "462.9 MB", true},
                                                            {"Files", "3", false},
                                                            {"Last Touched", "1,104 days ago", false}})));
    auto* list = new Panel("Support Files (2)");
    list->addRow(new ListRow("doc", "co.tessel.studio", "Application Support", "5.92 GB"));
    list->addRow(
        new ListRow("sparkles", "Tessel Studio", "Caches - co.tessel.studio", "1.21 GB", Tint::Caches));
    column->addWidget(list);
    auto* details = new Panel("Details");
    details->addRow(new DetailRow("Bundle ID", "co.tessel.studio"));
    details->addRow(new DetailRow("Location",
                                  "/Users/alex/Library/Developer/Xcode/iOS DeviceSupport/iPhone15,3 17.5 "
                                  "(21F79) with more behind it than fits"));
    column->addWidget(details);
    column->addWidget(emptyStates());
    column->addWidget(new ResultAlertButtons(true, [] {}, [] {}));
    return page;
}

std::unique_ptr<QWidget> makeSampleWindow() {
    auto window = std::make_unique<ColumnGround>(ColumnGround::Ground::Page);
    window->setWindowTitle("Quillane");
    window->resize(1280, 760);
    auto* columns = new QHBoxLayout(window.get());
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(0);

    auto* side = new ColumnGround(ColumnGround::Ground::Sidebar);
    side->setFixedWidth(211);
    auto* sideColumn = new QVBoxLayout(side);
    sideColumn->setContentsMargins(0, 0, 0, 0);
    sideColumn->setSpacing(0);
    auto* brand = new QWidget;
    brand->setFixedHeight(ToolbarRow::kHeight);
    auto* brandRow =
        rowOf({new SymbolView("BrandMark", 22), new Label("Quillane", {14, QFont::DemiBold})}, 9);
    brandRow->setContentsMargins(16, 0, 16, 0);
    brand->setLayout(brandRow);
    sideColumn->addWidget(brand);
    auto* sections = new SidebarView("Sections");
    sections->addSection("Overview", "sparkles");
    sections->addSection("Applications", "square.grid.2x2");
    sections->addSection("Orphaned Files", "questionmark.folder");
    sections->addSection("Startup", "power");
    sections->setBadge(1, "64", "Applications, 64");
    sections->setBadge(2, "8", "Orphaned Files, 8");
    sections->setBadge(3, "3", "Startup, 3 problems", Tint::Orange);
    sections->setCurrentRow(1);
    sideColumn->addWidget(sections, 1);
    columns->addWidget(side);
    columns->addWidget(new Rule(Rule::Weight::Edge, Qt::Vertical));

    auto* middle = new ColumnGround(ColumnGround::Ground::Base);
    auto* middleColumn = new QVBoxLayout(middle);
    middleColumn->setContentsMargins(0, 0, 0, 0);
    middleColumn->setSpacing(0);
    auto* toolbar = new ToolbarRow("Applications");
    toolbar->addControl(new SearchField);
    middleColumn->addWidget(toolbar);
    auto* table = sampleTable();
    table->setObjectName("table");
    middleColumn->addWidget(table, 1);
    auto* status = new StatusRow;
    status->setTexts("64 apps", {}, "148.92 GB total");
    middleColumn->addWidget(status);
    columns->addWidget(middle, 1);
    columns->addWidget(new Rule(Rule::Weight::Edge, Qt::Vertical));

    auto* detail = new ColumnGround(ColumnGround::Ground::Page);
    detail->setFixedWidth(348);
    auto* detailColumn = new QVBoxLayout(detail);
    detailColumn->setContentsMargins(0, 0, 0, 0);
    detailColumn->setSpacing(0);
    auto* actions = new ToolbarRow;
    auto* reveal = new PushButton("Reveal in Finder", "folder");
    actions->addControl(reveal);
    actions->addControl(new PushButton("Uninstall", "trash", PushButton::Role::Destructive));
    actions->setShrinking(reveal);
    detailColumn->addWidget(actions);
    auto* body = new QWidget;
    auto* stack = new QVBoxLayout(body);
    stack->setContentsMargins(16, 16, 16, 16);
    stack->setSpacing(12);
    stack->addWidget(
        new DetailHeader(new Tile("power", Tint::Startup, 48), "Tessel Studio", "Version 3.9.4 (39412)"));
    stack->addLayout(rowOf({new Badge("Intel", "arrow.triangle.2.circlepath", Tint::Orange),
                            new Badge("Applications", "internaldrive")},
                           6));
    auto* footprint = new Panel("Disk Footprint", new StatGrid({{"Total", "9.84 GB", true},
                                                                {"Bundle", "2.31 GB", false},
                                                                {"Support Files", "7.53 GB", false}}));
    footprint->addSpaced(new Note(
        "info.circle", "This app has no Apple Silicon build and runs through Rosetta 2 translation."));
    auto* clean = new PushButton("Clean Cache (1.26 GB)", "sparkles");
    clean->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    footprint->addSpaced(clean, 10);
    stack->addWidget(footprint);
    auto* details = new Panel("Details");
    details->addRow(new DetailRow("Bundle ID", "co.tessel.studio"));
    details->addRow(new DetailRow("Location", "/Applications"));
    details->addRow(new DetailRow("Last Used", "8 months ago"));
    details->addRow(new DetailRow("Minimum macOS", "10.15"));
    stack->addWidget(details);
    auto* support = new Panel("Support Files (6)");
    for (const char* size : {"5.92 GB", "1.21 GB", "284.6 MB", "111.1 MB", "1 KB", "0 KB"}) {
        support->addRow(new ListRow("doc", "co.tessel.studio", "Application Support", size));
    }
    stack->addWidget(support);
    stack->addStretch();
    auto* scroll = new QScrollArea;
    scroll->setWidget(body);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setAccessibleName("Details");
    detailColumn->addWidget(scroll, 1);
    columns->addWidget(detail);
    return window;
}

QImage drawn(QWidget& widget) {
    constexpr int kRatio = 2;
    QImage image(widget.size() * kRatio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(kRatio);
    image.fill(Qt::transparent);
    widget.render(&image);
    return image;
}

} // namespace quillane
