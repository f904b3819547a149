#include "Components/Style/QuillaneStyle.h"
#include "Components/Fonts.h"
#include "Components/Style/CheckBoxDrawing.h"
#include "Components/Style/ComboBoxDrawing.h"
#include "Components/Style/FocusFrameDrawing.h"
#include "Components/Style/MenuDrawing.h"
#include "Components/Style/PushButtonDrawing.h"
#include "Components/Style/RadioButtonDrawing.h"
#include "Components/Style/ScrollBarDrawing.h"
#include "Components/Style/SpinBoxDrawing.h"
#include "Components/Style/TextFieldDrawing.h"
#include "Components/Style/ToolTipDrawing.h"
#include "Components/Symbols.h"
#include "Components/SystemLook.h"
#include "Components/Tokens.h"
#include <QAbstractButton>
#include <QComboBox>
#include <QFocusFrame>
#include <QMenu>
#include <QStyleOption>
#include <algorithm>

namespace quillane {

namespace {

// A field that draws its ground: one within another control has none.
bool isField(const QStyleOption* option) {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    return frame != nullptr && frame->lineWidth > 0;
}

} // namespace

QuillaneStyle::QuillaneStyle()
    : QProxyStyle(QStringLiteral("fusion")) {}

void QuillaneStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
    switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        CheckBoxDrawing::draw(*painter, option->rect, option->state);
        return;
    case PE_IndicatorRadioButton:
        RadioButtonDrawing::draw(*painter, option->rect, option->state);
        return;
    case PE_FrameFocusRect:
        return; // FocusRing draws it
    case PE_PanelLineEdit:
        if (isField(option)) {
            TextFieldDrawing::draw(*painter, option->rect, option->state,
                                   widget != nullptr && widget->property("framed").toBool());
        }
        return;
    case PE_FrameLineEdit:
    case PE_FrameMenu:
        return; // part of the panel
    case PE_PanelMenu:
        MenuDrawing::drawGround(*painter, option->rect, widget);
        return;
    case PE_PanelTipLabel:
        ToolTipDrawing::drawGround(*painter, option->rect);
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void QuillaneStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element == CE_PushButton && button != nullptr) {
        PushButtonDrawing::draw(*button, *painter, widget);
        return;
    }
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item != nullptr) {
        drawMenuItem(*item, *painter, widget);
        return;
    }
    if (element == CE_FocusFrame) {
        if (const auto* frame = qobject_cast<const QFocusFrame*>(widget)) {
            FocusFrameDrawing::draw(*painter, *frame, *this);
        }
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void QuillaneStyle::drawMenuItem(const QStyleOptionMenuItem& item, QPainter& painter,
                                 const QWidget* widget) const {
    if (item.menuItemType == QStyleOptionMenuItem::Separator && item.text.isEmpty()) {
        MenuDrawing::drawDivider(painter, item.rect);
        return;
    }
    painter.save();
    if (qobject_cast<const QComboBox*>(widget) != nullptr) {
        painter.fillRect(item.rect, Tokens::current().card); // its list has painted another ground
    }
    const bool chosen = (item.state & State_Selected) && (item.state & State_Enabled);
    const QStyleOptionMenuItem plain = chosen ? MenuDrawing::drawChosen(item, painter) : item;
    QProxyStyle::drawControl(CE_MenuItem, &plain, &painter, widget);
    painter.restore();
}

void QuillaneStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && bar != nullptr) {
        ScrollBarDrawing::draw(*bar, *painter);
        return;
    }
    const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control == CC_ComboBox && combo != nullptr && !combo->editable) {
        ComboBoxDrawing::draw(*combo, *painter);
        return;
    }
    const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
    if (control == CC_SpinBox && box != nullptr) {
        SpinBoxDrawing::draw(*box, *painter);
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
        return FocusFrameDrawing::kWidth;
    case PM_SplitterWidth:
        return 1;
    case PM_ScrollBarExtent:
    case PM_ScrollView_ScrollBarOverlap:
        return ScrollBarDrawing::kExtent;
    case PM_ScrollBarSliderMin:
        return ScrollBarDrawing::kLeastThumb;
    case PM_ScrollView_ScrollBarSpacing:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_MenuPanelWidth:
        return metric == PM_MenuPanelWidth ? 1 : 0;
    case PM_MenuVMargin:
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
    case SH_FocusFrame_AboveWidget:
    case SH_ComboBox_Popup:
        return 1;
    case SH_FocusFrame_Mask: // it would cut square corners out of the round ring
    case SH_ItemView_ActivateItemOnSingleClick:
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
        return 0;
    case SH_Menu_Mask: {
        auto* const mask = qstyleoption_cast<QStyleHintReturnMask*>(data);
        const auto region = MenuDrawing::maskOf(widget);
        if (mask == nullptr || !region) {
            return 0;
        }
        mask->region = *region;
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
            return PushButtonDrawing::sizeOf(*button, widget);
        }
        break;
    case CT_ComboBox:
        return ComboBoxDrawing::sizeAround(size);
    case CT_SpinBox:
        return SpinBoxDrawing::sizeAround(size);
    case CT_LineEdit:
        return {size.width(), std::max(size.height(), Fonts::rowHeight(28))};
    default:
        break;
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

QRect QuillaneStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl sub,
                                    const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && bar != nullptr) {
        return ScrollBarDrawing::partOf(*bar, sub);
    }
    const auto own = control == CC_ComboBox  ? ComboBoxDrawing::partOf(option->rect, sub)
                     : control == CC_SpinBox ? SpinBoxDrawing::partOf(option->rect, sub)
                                             : std::nullopt;
    if (own) {
        return *own;
    }
    return QProxyStyle::subControlRect(control, option, sub, widget);
}

QRect QuillaneStyle::subElementRect(SubElement element, const QStyleOption* option,
                                    const QWidget* widget) const {
    if (element == SE_LineEditContents && isField(option)) {
        return option->rect.adjusted(7, 1, -7, -1);
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
