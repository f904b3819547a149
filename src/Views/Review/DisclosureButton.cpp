#include "Review/DisclosureButton.h"
#include "Components/Fonts.h"
#include "Components/Symbols.h"
#include "Components/TextStyle.h"
#include "Components/Tokens.h"
#include <QKeyEvent>
#include <QPainter>
#include <cmath>

namespace quillane {

namespace {
constexpr int kHeight = 28;
constexpr int kChevron = 10;
constexpr int kSign = 15;
constexpr int kSignLeft = 18;
constexpr int kTitleLeft = 42;
constexpr int kBeforeRemark = 9;
} // namespace

DisclosureButton::DisclosureButton(const QString& title, const QString& remark, QWidget* parent)
    : QAbstractButton(parent)
    , m_remark(remark) {
    setText(title);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAccessibleName(remark.isEmpty() ? title : title + QStringLiteral(", ") + remark);
}

QSize DisclosureButton::sizeHint() const {
    double width = kTitleLeft + QFontMetricsF(TextStyle::heading().font()).horizontalAdvance(text());
    if (!m_remark.isEmpty()) {
        const QFontMetricsF metrics(TextStyle::secondary().font());
        width += kBeforeRemark + metrics.horizontalAdvance(m_remark);
    }
    return {static_cast<int>(std::ceil(width)) + 6, Fonts::rowHeight(kHeight)};
}

void DisclosureButton::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    const double middle = height() / 2.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    Symbols::draw(painter, {3, std::round(middle - kChevron / 2.0)}, kChevron,
                  isChecked() ? QStringLiteral("chevron.down") : QStringLiteral("chevron.right"),
                  tokens.text2);
    Symbols::draw(painter, {kSignLeft, std::round(middle - kSign / 2.0)}, kSign,
                  QStringLiteral("exclamationmark.triangle.fill"), tokens.orange);
    QRectF place = QRectF(rect()).adjusted(kTitleLeft, 0, 0, 0);
    painter.setFont(TextStyle::heading().font());
    painter.setPen(tokens.text);
    painter.drawText(place, Qt::AlignVCenter | Qt::TextSingleLine, text());
    place.setLeft(place.left() + QFontMetricsF(painter.font()).horizontalAdvance(text()) + kBeforeRemark);
    painter.setFont(TextStyle::secondary().font());
    painter.setPen(tokens.text2);
    painter.drawText(place, Qt::AlignVCenter | Qt::TextSingleLine, m_remark);
}

// As in other disclosures, the arrows open and close too.
void DisclosureButton::keyPressEvent(QKeyEvent* event) {
    const bool closes = event->key() == Qt::Key_Left;
    if (closes || event->key() == Qt::Key_Right) {
        setChecked(!closes);
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

} // namespace quillane
