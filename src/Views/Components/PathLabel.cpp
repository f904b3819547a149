#include "Components/PathLabel.h"
#include "Components/Tokens.h"
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QPainter>
#include <QTextLayout>
#include <cmath>

namespace quillane {

namespace {

// Lays the lines below each other; answers how high they are.
double layLines(QTextLayout& layout, double width) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    double height = 0;
    layout.beginLayout();
    for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

} // namespace

PathLabel::PathLabel(const TextStyle& style, QWidget* parent)
    : Label({}, style, parent) {
    setWordWrap(true);
}

int PathLabel::heightForWidth(int width) const {
    QTextLayout layout(text(), font());
    return static_cast<int>(std::ceil(layLines(layout, std::max(width, 1))));
}

QSize PathLabel::sizeHint() const {
    return {Label::minimumSizeHint().width(), heightForWidth(std::max(width(), 1))};
}

QSize PathLabel::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

void PathLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(Tokens::current().tint(tint()));
    QTextLayout layout(text(), font());
    layLines(layout, width());
    layout.draw(&painter, {0, 0});
}

void PathLabel::contextMenuEvent(QContextMenuEvent* event) {
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("Copy"), this, [this] { QGuiApplication::clipboard()->setText(text()); });
    menu->popup(event->globalPos());
}

} // namespace quillane
