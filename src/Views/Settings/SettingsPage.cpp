#include "Settings/SettingsPage.h"
#include <QVBoxLayout>

namespace quillane {

namespace {

constexpr int kSides = 20;
constexpr int kBelow = 24;
constexpr int kGap = 16;

} // namespace

SettingsPage::SettingsPage(QWidget* parent)
    : ColumnGround(Ground::Page, parent)
    , m_column(new QVBoxLayout(this)) {
    m_column->setContentsMargins(kSides, kSides, kSides, kBelow);
    m_column->setSpacing(kGap);
    m_column->addStretch(1);
}

void SettingsPage::add(QWidget* part) {
    m_column->insertWidget(m_column->count() - 1, part);
}

} // namespace quillane
