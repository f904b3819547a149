#include "Components/ToolbarRow.h"
#include "Components/Fonts.h"
#include "Components/Hairline.h"
#include "Components/Label.h"
#include "Components/PushButton.h"
#include "Components/Tokens.h"
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <algorithm>

namespace quillane {

namespace {
constexpr int kLeft = 16;
constexpr int kRight = 15;       // the line between the columns is the sixteenth
constexpr int kLeftUntitled = 6; // three labelled buttons need it in the narrowest detail pane
constexpr int kRightUntitled = 16;
constexpr int kSpacing = 8;
} // namespace

ToolbarRow::ToolbarRow(const QString& title, Line line, QWidget* parent)
    : QWidget(parent)
    , m_row(new QHBoxLayout(this))
    , m_title(new Label(title, TextStyle::columnTitle()))
    , m_line(line) {
    Fonts::follow(this, [this] { setFixedHeight(scaledHeight()); });
    // The row may be narrower than its labels ask for: they shrink.
    m_row->setSizeConstraint(QLayout::SetNoConstraint);
    m_row->setSpacing(kSpacing);
    m_row->addWidget(m_title, 0, Qt::AlignVCenter);
    m_row->addStretch(1);
    setTitle(title);
}

int ToolbarRow::scaledHeight() {
    constexpr int kAir = 24;
    return Fonts::rowHeight(kHeight, TextStyle::columnTitle().px, kAir);
}

void ToolbarRow::setTitle(const QString& title) {
    m_title->setText(title);
    m_title->setVisible(!title.isEmpty());
    m_row->setContentsMargins(title.isEmpty() ? kLeftUntitled : kLeft, 0,
                              title.isEmpty() ? kRightUntitled : kRight, 0);
    fit();
}

QString ToolbarRow::title() const {
    return m_title->text();
}

void ToolbarRow::addControl(QWidget* control) {
    m_controls.push_back(control);
    m_row->addWidget(control, 0, Qt::AlignVCenter);
    fit();
}

void ToolbarRow::clearControls() {
    m_shrinking = nullptr;
    for (QWidget* control : m_controls) {
        m_row->removeWidget(control);
        control->hide();
        control->deleteLater();
    }
    m_controls.clear();
}

void ToolbarRow::setShrinking(PushButton* button) {
    m_shrinking = button;
    fit();
}

// The window must not be kept from narrowing by a label that can go.
QSize ToolbarRow::minimumSizeHint() const {
    QSize size = QWidget::minimumSizeHint();
    if (m_shrinking != nullptr && !m_shrinking->isCompact()) {
        size.rwidth() -= m_shrinking->fullWidth() - PushButton::kCompactWidth;
    }
    return size;
}

void ToolbarRow::fit() {
    if (m_shrinking == nullptr || width() <= 0) {
        return;
    }
    const QMargins margins = m_row->contentsMargins();
    int needed = margins.left() + margins.right();
    if (!m_title->isHidden()) {
        needed += m_title->sizeHint().width() + kSpacing;
    }
    int shown = 0;
    for (const QWidget* control : m_controls) {
        if (!control->isHidden()) {
            needed += control == m_shrinking ? m_shrinking->fullWidth() : control->sizeHint().width();
            ++shown;
        }
    }
    needed += kSpacing * std::max(0, shown - 1);
    m_shrinking->setCompact(needed > width());
}

void ToolbarRow::paintEvent(QPaintEvent*) {
    if (m_line == Line::Below) {
        QPainter painter(this);
        Hairline::fill(painter, QRect(0, height() - 1, width(), 1), Tokens::current().line);
    }
}

void ToolbarRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fit();
}

bool ToolbarRow::event(QEvent* event) {
    // A control changed its words or was shown or hidden.
    if (event->type() == QEvent::LayoutRequest) {
        fit();
    }
    return QWidget::event(event);
}

} // namespace quillane
