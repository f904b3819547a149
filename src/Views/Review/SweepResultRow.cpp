#include "Review/SweepResultRow.h"
#include "Components/CategoryTint.h"
#include "Components/Fonts.h"
#include "Components/Label.h"
#include "Components/PermanentBadge.h"
#include "Components/ShownText.h"
#include "Components/SymbolView.h"
#include "Formatting.h"
#include <QHBoxLayout>

namespace quillane {

namespace {
constexpr int kHeight = 36;
constexpr int kSymbol = 16;
constexpr TextStyle kTitle{13, QFont::Medium};
} // namespace

SweepResultRow::SweepResultRow(SweepCategory category, Bytes bytes, QWidget* parent)
    : QWidget(parent)
    , m_category(category)
    , m_size(words(Formatting::byteCount(bytes))) {
    Fonts::follow(this, [this] { setFixedHeight(Fonts::rowHeight(kHeight)); });
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(14, 0, 14, 0);
    row->setSpacing(10);
    row->addWidget(new SymbolView(words(symbol(category)), kSymbol, tintOf(category)));
    row->addWidget(new Label(words(rawValue(category)), kTitle));
    if (category == SweepCategory::trash) {
        row->addWidget(new PermanentBadge);
    }
    row->addStretch();
    auto* size = new Label(m_size, TextStyle::heading());
    size->setTabular(true);
    row->addWidget(size);
}

} // namespace quillane
