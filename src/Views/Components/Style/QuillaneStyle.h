#pragma once
#include <QProxyStyle>

class QStyleOptionMenuItem;

namespace quillane {

// The style of Linux: Fusion with the drawings replaced that would look foreign. It only hands out: what draws a
// control, and says how large it and its parts are, stands in the file of that control beside this one. All
// colours come from Tokens::current() while painting.
class QuillaneStyle : public QProxyStyle {
    Q_OBJECT
  public:
    QuillaneStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl sub,
                         const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap pixmap, const QStyleOption* option,
                       const QWidget* widget) const override;
    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

  private:
    void drawMenuItem(const QStyleOptionMenuItem& item, QPainter& painter, const QWidget* widget) const;
};

} // namespace quillane
