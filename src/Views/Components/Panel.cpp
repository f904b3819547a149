#include "Components/Panel.h"
#include "Components/Label.h"
#include "Components/Rule.h"

namespace quillane {

namespace {
constexpr int kPadding = 14;
constexpr int kBelowHeading = 10;
} // namespace

Panel::Panel(const std::optional<QString>& title, QWidget* content, QWidget* parent)
    : Card(parent) {
    auto* outer = new QVBoxLayout(this);
    // One pixel more below: that of the shadow.
    outer->setContentsMargins(kPadding, kPadding, kPadding, kPadding + 1);
    outer->setSpacing(kBelowHeading);
    m_content = new QVBoxLayout;
    m_content->setSpacing(0);
    if (title.has_value()) {
        m_heading = new Label(*title, TextStyle::heading());
        outer->addWidget(m_heading);
        setAccessibleName(*title);
    }
    outer->addLayout(m_content);
    if (content != nullptr) {
        m_content->addWidget(content);
    }
}

void Panel::addRow(QWidget* row) {
    if (m_content->count() > 0) {
        m_content->addWidget(new Rule(Rule::Weight::Row));
    }
    m_content->addWidget(row);
}

void Panel::addSpaced(QWidget* widget, int gap) {
    if (m_content->count() > 0) {
        m_content->addSpacing(gap);
    }
    m_content->addWidget(widget);
}

void Panel::setOverhang(int pixels) {
    QMargins margins = layout()->contentsMargins();
    margins.setLeft(kPadding - pixels);
    margins.setRight(kPadding - pixels);
    layout()->setContentsMargins(margins);
    if (m_heading != nullptr) {
        m_heading->setContentsMargins(pixels, 0, pixels, 0);
    }
}

void Panel::setTitle(const QString& title) {
    if (m_heading != nullptr) {
        m_heading->setText(title);
        setAccessibleName(title);
    }
}

} // namespace quillane
