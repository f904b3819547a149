#include "Components/PushButton.h"
#include "Components/Fonts.h"
#include "Components/Style/PushButtonDrawing.h"
#include "Components/Symbols.h"
#include "Components/SystemLook.h"
#include <QPainter>
#include <QStyleOptionButton>

namespace quillane {

namespace {

QString escaped(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

Tint symbolTint(PushButton::Role role) {
    switch (role) {
    case PushButton::Role::Normal:
        return Tint::Text;
    case PushButton::Role::Filled:
    case PushButton::Role::Permanent:
        return Tint::White;
    case PushButton::Role::Destructive:
        return Tint::Red;
    case PushButton::Role::Plain:
        return Tint::Secondary;
    }
    return Tint::Text;
}

bool fills(PushButton::Role role) {
    return role == PushButton::Role::Filled || role == PushButton::Role::Permanent;
}

double pixelsFor(PushButton::Size size) {
    return size == PushButton::Size::Hero ? 14 : size == PushButton::Size::Small ? 12 : 13;
}

QFont fontFor(PushButton::Role role, double px) {
    return Fonts::of(px, fills(role) ? QFont::DemiBold : QFont::Medium);
}

// Large text has no room in every button that takes the width it gets: its words are drawn smaller there, down to
// the usual size.
QFont fittedFont(QStyleOptionButton option, const PushButton& button) {
    constexpr double kStep = 0.5;
    const double usual = pixelsFor(button.buttonSize());
    for (double px = usual; px * Fonts::scale() > usual; px -= kStep) {
        const QFont font = fontFor(button.role(), px);
        option.fontMetrics = QFontMetrics(font);
        if (PushButtonDrawing::sizeOf(option, &button).width() <= button.width()) {
            return font;
        }
    }
    return fontFor(button.role(), usual / Fonts::scale());
}

int symbolSide(PushButton::Size size) {
    return size == PushButton::Size::Hero ? 18 : size == PushButton::Size::Small ? 13 : 15;
}

// Native buttons of macOS have one height each and no red.
bool paintsItself(PushButton::Role role, PushButton::Size size) {
    return !SystemLook::isNative() || role == PushButton::Role::Permanent || size == PushButton::Size::Hero;
}

} // namespace

PushButton::PushButton(const QString& text, const QString& symbol, Role role, Size size, QWidget* parent)
    : QPushButton(parent)
    , m_label(text)
    , m_symbol(symbol)
    , m_role(role)
    , m_size(size) {
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    dress();
    Fonts::follow(this, [this] { wearFont(); });
}

void PushButton::setRole(Role role) {
    m_role = role;
    dress();
}

void PushButton::setLabel(const QString& label) {
    m_label = label;
    dress();
}

void PushButton::setSymbol(const QString& symbol) {
    m_symbol = symbol;
    dress();
}

void PushButton::setCompact(bool compact) {
    const bool possible = compact && !m_symbol.isEmpty();
    if (possible != m_compact) {
        m_compact = possible;
        setToolTip(possible ? m_label : QString());
        dress();
    }
}

void PushButton::wearFont() {
    if (paintsItself(m_role, m_size)) {
        setFont(fontFor(m_role, pixelsFor(m_size)));
    }
}

void PushButton::dress() {
    setFlat(m_role == Role::Plain);
    wearFont();
    setText(m_compact ? QString() : escaped(m_label));
    setAccessibleName(m_label);
    setIcon(Symbols::icon(m_symbol, symbolTint(m_role)));
    setIconSize(QSize(symbolSide(m_size), symbolSide(m_size)));
    updateGeometry();
    update();
}

QSize PushButton::sizeFor(bool compact) const {
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text = compact ? QString() : escaped(m_label);
    if (paintsItself(m_role, m_size)) {
        return PushButtonDrawing::sizeOf(option, this);
    }
    const int width = option.fontMetrics.horizontalAdvance(option.text) + iconSize().width();
    return style()->sizeFromContents(QStyle::CT_PushButton, &option, {width, option.fontMetrics.height()},
                                     this);
}

int PushButton::fullWidth() const {
    return sizeFor(false).width();
}

QSize PushButton::sizeHint() const {
    return sizeFor(m_compact);
}

// A button that takes the width it gets makes nothing wider than it is.
QSize PushButton::minimumSizeHint() const {
    const bool isWide = sizePolicy().horizontalPolicy() == QSizePolicy::Expanding;
    return isWide ? QSize(kCompactWidth, sizeHint().height()) : sizeHint();
}

void PushButton::paintEvent(QPaintEvent* event) {
    if (!paintsItself(m_role, m_size)) {
        QPushButton::paintEvent(event);
        return;
    }
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    painter.setFont(fittedFont(option, *this));
    option.fontMetrics = QFontMetrics(painter.font());
    PushButtonDrawing::draw(option, painter, this);
}

} // namespace quillane
