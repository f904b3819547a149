#include "Components/QuillaneStyle.h"
#include "Components/Fonts.h"
#include "Components/Hairline.h"
#include "Components/PushButton.h"
#include "Components/RoundRegion.h"
#include "Components/Symbols.h"
#include "Components/SystemLook.h"
#include "Components/Tokens.h"
#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusFrame>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyleOption>
#include <QToolButton>
#include <algorithm>
#include <cmath>

namespace quillane {

namespace {

constexpr int kScrollBar = 10;
constexpr int kLeastSlider = 36;
constexpr int kRing = 3;
constexpr double kFieldRadius = 7;
constexpr double kCheckRadius = 4.5;
constexpr double kMenuRadius = 9;
constexpr int kPressedPercent = 112; // 12 % darker
constexpr double kDisabledShare = 0.45;
constexpr int kStepperWidth = 18;

double radiusOf(int height) {
    return height >= 40 ? 10 : height >= 32 ? 8 : height <= 24 ? 6 : kFieldRadius;
}

// What a push button is: told by PushButton, else by the features of a plain QPushButton.
PushButton::Role roleOf(const QStyleOptionButton& option, const QWidget* widget) {
    if (const auto* button = qobject_cast<const PushButton*>(widget)) {
        return button->role();
    }
    if (option.features & QStyleOptionButton::DefaultButton) {
        return PushButton::Role::Filled;
    }
    return (option.features & QStyleOptionButton::Flat) ? PushButton::Role::Plain : PushButton::Role::Normal;
}

int heightOf(const QWidget* widget) {
    const auto* button = qobject_cast<const PushButton*>(widget);
    return static_cast<int>(button != nullptr ? button->buttonSize() : PushButton::Size::Regular);
}

struct Dress {
    QColor ground = Qt::transparent;
    QColor edge = Qt::transparent;
    QColor words;
};

struct Condition {
    bool enabled;
    bool pressed;
    bool hovered;
};

Condition conditionOf(const QStyleOption& option) {
    const bool enabled = option.state & QStyle::State_Enabled;
    return {enabled, enabled && (option.state & (QStyle::State_Sunken | QStyle::State_On)),
            enabled && (option.state & QStyle::State_MouseOver)};
}

Dress filledDress(const Condition& is, const QColor& ground, const QColor& hovered) {
    const Tokens& tokens = Tokens::current();
    if (!is.enabled) {
        return {tokens.fill, Qt::transparent, tokens.text3};
    }
    return {is.pressed   ? hovered.darker(kPressedPercent)
            : is.hovered ? hovered
                         : ground,
            Qt::transparent, Qt::white};
}

Dress framedDress(const Condition& is, const QColor& words, const QColor& hover, const QColor& press) {
    const Tokens& tokens = Tokens::current();
    if (!is.enabled) {
        return {faded(tokens.ctl, kDisabledShare), faded(tokens.ctlLine, kDisabledShare),
                faded(words, kDisabledShare)};
    }
    return {is.pressed ? press : is.hovered ? hover : tokens.ctl, tokens.ctlLine, words};
}

Dress dressOf(PushButton::Role role, const Condition& is) {
    const Tokens& tokens = Tokens::current();
    switch (role) {
    case PushButton::Role::Filled:
        return filledDress(is, tokens.accent, tokens.accentHover);
    case PushButton::Role::Permanent:
        return filledDress(is, tokens.permanent, tokens.permanent.darker(108));
    case PushButton::Role::Destructive: {
        QColor press = tokens.redSoft;
        press.setAlphaF(std::min(1.0F, press.alphaF() * 1.6F));
        return framedDress(is, tokens.red, tokens.redSoft, press);
    }
    case PushButton::Role::Plain: {
        const QColor ground = is.pressed ? tokens.side : is.hovered ? tokens.fill : QColor(Qt::transparent);
        return {ground, Qt::transparent, is.enabled ? tokens.text2 : faded(tokens.text2, kDisabledShare)};
    }
    case PushButton::Role::Normal:
        break;
    }
    return framedDress(is, tokens.text, tokens.alt, tokens.line2);
}

void drawGround(QPainter& painter, const QRectF& rect, double radius, const QColor& ground,
                const QColor& edge) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(ground);
    if (edge.alpha() == 0) {
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(rect, radius, radius);
    } else {
        painter.setPen(edge);
        painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
    }
}

// A menu arrow or a step arrow.
void drawChevron(QPainter& painter, const QRectF& rect, const QString& name, const QColor& color) {
    constexpr double kSide = 10;
    Symbols::draw(painter,
                  {std::round(rect.center().x() - kSide / 2), std::round(rect.center().y() - kSide / 2)},
                  kSide, name, color);
}

void drawRadio(QPainter& painter, const QRectF& rect, QStyle::State state) {
    const Tokens& tokens = Tokens::current();
    const bool on = state & QStyle::State_On;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity((state & QStyle::State_Enabled) ? 1 : 0.4);
    const QRectF edge = rect.adjusted(0.75, 0.75, -0.75, -0.75);
    painter.setPen(QPen(on ? tokens.accent : tokens.text3, 1.5));
    painter.setBrush(on ? tokens.accent : tokens.ctl);
    painter.drawEllipse(edge);
    if (on) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        const double inner = rect.width() * 0.19;
        painter.drawEllipse(rect.center(), inner, inner);
    }
    painter.restore();
}

// The symbol of that name would be a hair at this size.
void drawTick(QPainter& painter, const QRectF& box, bool mixed) {
    const auto at = [&box](double x, double y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    constexpr double kStroke = 0.075; // of the box
    painter.setPen(QPen(Qt::white, kStroke * box.width(), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    if (mixed) { // on whole pixels, as it lies along them
        const double y = std::floor(box.center().y()) + 0.5;
        painter.drawLine(QPointF(at(0.28, 0).x(), y), QPointF(at(0.72, 0).x(), y));
    } else {
        painter.drawPolyline(QPolygonF{at(0.27, 0.52), at(0.43, 0.68), at(0.73, 0.32)});
    }
}

void drawField(QPainter& painter, const QRectF& rect, QStyle::State state, bool framed) {
    const Tokens& tokens = Tokens::current();
    painter.save();
    if (!(state & QStyle::State_Enabled)) {
        painter.setOpacity(kDisabledShare);
    }
    if (state & QStyle::State_HasFocus) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(tokens.accent, 2));
        painter.setBrush(tokens.ctl);
        painter.drawRoundedRect(rect.adjusted(1, 1, -1, -1), kFieldRadius - 1, kFieldRadius - 1);
    } else if (framed) {
        drawGround(painter, rect, kFieldRadius, tokens.ctl, tokens.ctlLine);
    } else {
        drawGround(painter, rect, kFieldRadius, tokens.fill,
                   tokens.highContrast ? tokens.ctlLine : QColor(Qt::transparent));
    }
    painter.restore();
}

void drawSlider(QPainter& painter, const QRectF& rect, bool hot) {
    const QColor color = faded(Tokens::current().text3, hot ? 0.75 : 0.42);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(rect.adjusted(2, 2, -2, -2), 3, 3);
    painter.restore();
}

QRectF focusShape(const QWidget& control, const QStyle& style, double& radius) {
    const QRectF whole = control.rect();
    QStyleOptionButton option;
    option.initFrom(&control);
    if (qobject_cast<const QCheckBox*>(&control) != nullptr) {
        radius = kCheckRadius;
        return style.subElementRect(QStyle::SE_CheckBoxIndicator, &option, &control);
    }
    if (qobject_cast<const QRadioButton*>(&control) != nullptr) {
        const QRectF dot = style.subElementRect(QStyle::SE_RadioButtonIndicator, &option, &control);
        radius = dot.height() / 2;
        return dot;
    }
    const QVariant own = control.property("focusRadius");
    radius = own.isValid() ? own.toDouble() : radiusOf(control.height());
    return whole;
}

bool isMasked(const QWidget* menu) {
    return menu != nullptr && menu->isWindow() && !menu->testAttribute(Qt::WA_TranslucentBackground);
}

// The ground and the edge of a menu. Where the screen cannot blend, a mask cuts the corners and needs the edge's
// colour up to its own edge.
void drawMenuGround(QPainter& painter, const QRect& rect, bool isMasked) {
    const Tokens& tokens = Tokens::current();
    painter.save();
    if (isMasked) {
        painter.fillRect(rect, tokens.line);
    }
    drawGround(painter, rect, kMenuRadius, tokens.card, tokens.line);
    painter.restore();
}

void drawMenuDivider(QPainter& painter, const QRect& rect) {
    constexpr int kInset = 10;
    Hairline::fill(painter, QRect(rect.left() + kInset, rect.center().y(), rect.width() - 2 * kInset, 1),
                   Tokens::current().line2);
}

// The chosen line of a menu: Fusion draws its words and icon, white on a rounded ground of ours.
QStyleOptionMenuItem onMenuGround(const QStyleOptionMenuItem& item, QPainter& painter) {
    constexpr double kLineRadius = 5;
    drawGround(painter, QRectF(item.rect).adjusted(1, 0, -1, 0), kLineRadius, Tokens::current().sel,
               Qt::transparent);
    QStyleOptionMenuItem plain = item;
    plain.state.setFlag(QStyle::State_Selected, false);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        plain.palette.setColor(role, Qt::white);
    }
    if (!item.icon.isNull()) {
        const QSize side(item.maxIconWidth, item.maxIconWidth);
        plain.icon = QIcon(item.icon.pixmap(side, painter.device()->devicePixelRatioF(), QIcon::Selected));
    }
    return plain;
}

void drawFocusFrame(QPainter& painter, const QFocusFrame& frame, const QStyle& style) {
    const QWidget* control = frame.widget();
    if (control == nullptr) {
        return;
    }
    double radius = 0;
    const QRectF shape = focusShape(*control, style, radius).translated(kRing, kRing);
    const double half = kRing / 2.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Tokens::current().ring, kRing));
    painter.drawRoundedRect(shape.adjusted(-half, -half, half, half), radius + half, radius + half);
    painter.restore();
}

} // namespace

QuillaneStyle::QuillaneStyle()
    : QProxyStyle(QStringLiteral("fusion")) {}

// ---- Push buttons

QSize QuillaneStyle::pushButtonSize(const QStyleOptionButton& option, const QWidget* widget) {
    const int base = heightOf(widget);
    const bool small = base < 28;
    const int height = Fonts::rowHeight(base, small ? 12 : 13, small ? 6 : 12);
    if (option.text.isEmpty() && !option.icon.isNull()) {
        return {PushButton::kCompactWidth, height};
    }
    const int sides = base >= 40 ? 44 : base >= 32 ? 34 : small ? 18 : 24;
    int width = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width() + sides;
    if (!option.icon.isNull()) {
        width += option.iconSize.width() + (base >= 40 ? 8 : 7);
    }
    return {width, height};
}

void QuillaneStyle::drawPushButton(const QStyleOptionButton& option, QPainter& painter,
                                   const QWidget* widget) {
    const PushButton::Role role = roleOf(option, widget);
    const Condition is = conditionOf(option);
    const Dress dress = dressOf(role, is);
    painter.save();
    drawGround(painter, option.rect, radiusOf(option.rect.height()), dress.ground, dress.edge);
    painter.setFont(widget != nullptr ? widget->font() : painter.font());
    painter.setPen(dress.words);
    const double words = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
    const double icon = option.icon.isNull() ? 0 : option.iconSize.width();
    const double gap = icon > 0 && words > 0 ? (option.rect.height() >= 40 ? 8 : 7) : 0;
    const bool menu = option.features & QStyleOptionButton::HasMenu;
    const QRectF whole = QRectF(option.rect).adjusted(0, 0, menu ? -16 : 0, 0);
    const double left = std::max(whole.left() + 4, whole.center().x() - (icon + gap + words) / 2);
    if (icon > 0) {
        const double top = whole.center().y() - icon / 2;
        option.icon.paint(&painter, QRectF(std::round(left), std::round(top), icon, icon).toRect(),
                          Qt::AlignCenter, is.enabled ? QIcon::Normal : QIcon::Disabled);
    }
    const QRectF place(left + icon + gap, whole.top(), whole.right() - left - icon - gap, whole.height());
    const QString text = option.fontMetrics.elidedText(
        option.text, Qt::ElideRight, static_cast<int>(std::ceil(place.width())), Qt::TextShowMnemonic);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextHideMnemonic | Qt::TextSingleLine,
                     text);
    if (menu) {
        drawChevron(painter, QRectF(option.rect.right() - 20, option.rect.top(), 14, option.rect.height()),
                    QStringLiteral("chevron.down"), dress.words);
    }
    painter.restore();
}

void QuillaneStyle::drawCheckBox(QPainter& painter, const QRectF& rect, State state) {
    const Tokens& tokens = Tokens::current();
    const bool mixed = state & State_NoChange;
    const bool on = mixed || (state & State_On);
    QColor ground = on ? tokens.accent : tokens.ctl;
    if (state & State_Sunken) {
        ground = ground.darker(kPressedPercent);
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity((state & State_Enabled) ? painter.opacity() : painter.opacity() * 0.4);
    painter.setPen(on ? QPen(Qt::NoPen) : QPen(tokens.text3, 1.5));
    painter.setBrush(ground);
    const double inset = on ? 0 : 0.75;
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), kCheckRadius - inset / 2,
                            kCheckRadius - inset / 2);
    if (on) {
        drawTick(painter, rect, mixed);
    }
    painter.restore();
}

// ---- QStyle

void QuillaneStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
    switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        drawCheckBox(*painter, option->rect, option->state);
        return;
    case PE_IndicatorRadioButton:
        drawRadio(*painter, option->rect, option->state);
        return;
    case PE_FrameFocusRect:
        return; // FocusRing draws it
    case PE_PanelLineEdit: {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        if (frame != nullptr && frame->lineWidth > 0) {
            drawField(*painter, option->rect, option->state,
                      widget != nullptr && widget->property("framed").toBool());
        }
        return;
    }
    case PE_FrameLineEdit:
    case PE_FrameMenu:
        return; // part of the panel
    case PE_PanelMenu:
        drawMenuGround(*painter, option->rect, isMasked(widget));
        return;
    case PE_PanelTipLabel: {
        const Tokens& tokens = Tokens::current();
        painter->fillRect(option->rect, tokens.card);
        painter->setPen(tokens.line);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        return;
    }
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void QuillaneStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element == CE_PushButton && button != nullptr) {
        drawPushButton(*button, *painter, widget);
        return;
    }
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item != nullptr) {
        drawMenuItem(*item, *painter, widget);
        return;
    }
    if (element == CE_FocusFrame) {
        if (const auto* frame = qobject_cast<const QFocusFrame*>(widget)) {
            drawFocusFrame(*painter, *frame, *this);
        }
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void QuillaneStyle::drawMenuItem(const QStyleOptionMenuItem& item, QPainter& painter,
                                 const QWidget* widget) const {
    if (item.menuItemType == QStyleOptionMenuItem::Separator && item.text.isEmpty()) {
        drawMenuDivider(painter, item.rect);
        return;
    }
    painter.save();
    const bool chosen = (item.state & State_Selected) && (item.state & State_Enabled);
    const QStyleOptionMenuItem plain = chosen ? onMenuGround(item, painter) : item;
    QProxyStyle::drawControl(CE_MenuItem, &plain, &painter, widget);
    painter.restore();
}

void QuillaneStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    const Tokens& tokens = Tokens::current();
    if (control == CC_ScrollBar) {
        const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
        if (slider != nullptr && slider->maximum > slider->minimum) {
            drawSlider(*painter, subControlRect(control, option, SC_ScrollBarSlider, widget),
                       option->state & (State_MouseOver | State_Sunken));
        }
        return;
    }
    if (control == CC_ComboBox) {
        const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        if (combo != nullptr && !combo->editable) {
            const Dress dress = dressOf(PushButton::Role::Normal, conditionOf(*option));
            painter->save();
            drawGround(*painter, option->rect, radiusOf(option->rect.height()), dress.ground, dress.edge);
            drawChevron(*painter, subControlRect(control, option, SC_ComboBoxArrow, widget),
                        QStringLiteral("chevron.down"), dress.words);
            painter->restore();
            return;
        }
    }
    if (control == CC_SpinBox) {
        const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
        painter->save();
        // The figure stands free before its stepper and gets a field only while it is typed into.
        if (option->state & State_HasFocus) {
            drawField(*painter, option->rect.adjusted(0, 0, -kStepperWidth - 4, 0), option->state, true);
        }
        const Dress stepper = dressOf(PushButton::Role::Normal, conditionOf(*option));
        drawGround(*painter,
                   QRectF(option->rect.right() + 1 - kStepperWidth, option->rect.top() + 1, kStepperWidth,
                          option->rect.height() - 2),
                   5, (option->state & State_Enabled) ? tokens.ctl : stepper.ground, stepper.edge);
        const bool enabled = option->state & State_Enabled;
        const auto arrow = [&](SubControl sub, const QString& name, QAbstractSpinBox::StepEnabledFlag flag) {
            const bool can = enabled && box != nullptr && (box->stepEnabled & flag);
            drawChevron(*painter, subControlRect(control, option, sub, widget), name,
                        can ? tokens.text : faded(tokens.text, kDisabledShare));
        };
        arrow(SC_SpinBoxUp, QStringLiteral("chevron.up"), QAbstractSpinBox::StepUpEnabled);
        arrow(SC_SpinBoxDown, QStringLiteral("chevron.down"), QAbstractSpinBox::StepDownEnabled);
        painter->restore();
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

int QuillaneStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return 18;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return 8;
    case PM_FocusFrameHMargin:
    case PM_FocusFrameVMargin:
        return kRing;
    case PM_SplitterWidth:
        return 1;
    case PM_ScrollBarExtent:
    case PM_ScrollView_ScrollBarOverlap:
        return kScrollBar;
    case PM_ScrollBarSliderMin:
        return kLeastSlider;
    case PM_ScrollView_ScrollBarSpacing:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_MenuPanelWidth:
        return metric == PM_MenuPanelWidth ? 1 : 0;
    case PM_MenuVMargin:
        return 5;
    case PM_MenuHMargin:
        return 5;
    case PM_LineEditIconSize:
        return 14;
    case PM_LineEditIconMargin:
        return 6;
    case PM_ToolTipLabelFrameWidth:
        return 5;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int QuillaneStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* data) const {
    switch (hint) {
    case SH_ScrollBar_Transient:
        return 1;
    case SH_FocusFrame_AboveWidget:
        return 1;
    case SH_FocusFrame_Mask:
        return 0; // it would cut square corners out of the round ring
    case SH_ItemView_ActivateItemOnSingleClick:
        return 0;
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
        return 0;
    case SH_ComboBox_Popup:
        return 0;
    case SH_Menu_Mask: {
        auto* const mask = qstyleoption_cast<QStyleHintReturnMask*>(data);
        if (mask == nullptr || !isMasked(widget)) {
            return 0;
        }
        mask->region = roundRegion(widget->size(), kMenuRadius);
        return 1;
    }
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

QSize QuillaneStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                      const QWidget* widget) const {
    switch (type) {
    case CT_PushButton:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
            return pushButtonSize(*button, widget);
        }
        break;
    case CT_ComboBox:
        return {size.width() + 44, Fonts::rowHeight(28)};
    case CT_SpinBox:
        return {size.width() + kStepperWidth + 18, Fonts::rowHeight(28)};
    case CT_LineEdit:
        return {size.width(), std::max(size.height(), Fonts::rowHeight(28))};
    default:
        break;
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

QRect QuillaneStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl sub,
                                    const QWidget* widget) const {
    const QRect rect = option->rect;
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && bar != nullptr) {
        const bool flat = bar->orientation == Qt::Horizontal;
        const int length = flat ? rect.width() : rect.height();
        const qint64 range = static_cast<qint64>(bar->maximum) - bar->minimum;
        const qint64 page = std::max(1, bar->pageStep);
        const int wish = range > 0 ? static_cast<int>(page * length / (range + page)) : length;
        const int slider = std::min(length, std::max(kLeastSlider, wish));
        const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                                  length - slider, bar->upsideDown);
        const auto part = [&](int from, int extent) {
            return flat ? QRect(rect.x() + from, rect.y(), extent, rect.height())
                        : QRect(rect.x(), rect.y() + from, rect.width(), extent);
        };
        switch (sub) {
        case SC_ScrollBarSlider:
            return part(start, slider);
        case SC_ScrollBarGroove:
            return rect;
        case SC_ScrollBarSubPage:
            return part(0, start);
        case SC_ScrollBarAddPage:
            return part(start + slider, length - start - slider);
        default:
            return {};
        }
    }
    if (control == CC_ComboBox) {
        switch (sub) {
        case SC_ComboBoxEditField:
            return rect.adjusted(12, 1, -26, -1);
        case SC_ComboBoxArrow:
            return {rect.right() - 23, rect.top(), 14, rect.height()};
        default:
            break;
        }
    }
    if (control == CC_SpinBox) {
        const int left = rect.right() + 1 - kStepperWidth;
        const int half = rect.height() / 2;
        switch (sub) {
        case SC_SpinBoxUp:
            return {left, rect.top() + 2, kStepperWidth, half - 2};
        case SC_SpinBoxDown:
            return {left, rect.top() + half, kStepperWidth, half - 2};
        case SC_SpinBoxEditField:
            return rect.adjusted(8, 2, -kStepperWidth - 10, -2);
        case SC_SpinBoxFrame:
            return rect;
        default:
            break;
        }
    }
    return QProxyStyle::subControlRect(control, option, sub, widget);
}

QRect QuillaneStyle::subElementRect(SubElement element, const QStyleOption* option,
                                    const QWidget* widget) const {
    if (element == SE_LineEditContents) {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        if (frame != nullptr && frame->lineWidth > 0) {
            return option->rect.adjusted(7, 1, -7, -1);
        }
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QIcon QuillaneStyle::standardIcon(StandardPixmap pixmap, const QStyleOption* option,
                                  const QWidget* widget) const {
    if (pixmap == SP_LineEditClearButton) {
        return Symbols::icon(QStringLiteral("xmark"), Tint::Tertiary);
    }
    return QProxyStyle::standardIcon(pixmap, option, widget);
}

void QuillaneStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    // Without it the state under the pointer is not told to the drawings.
    if (qobject_cast<QAbstractButton*>(widget) != nullptr || qobject_cast<QComboBox*>(widget) != nullptr) {
        widget->setAttribute(Qt::WA_Hover);
    }
    if (qobject_cast<QMenu*>(widget) != nullptr) {
        widget->setAttribute(Qt::WA_TranslucentBackground, SystemLook::blendsWindows()); // round corners
    }
}

} // namespace quillane
