#include "Components/Sheet.h"
#include "Components/Hairline.h"
#include "Components/LibraryObserver.h"
#include "Components/RoundRegion.h"
#include "Components/Scrim.h"
#include "Components/SystemLook.h"
#include "Components/Tokens.h"
#include <QEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>

namespace quillane {

namespace {
constexpr double kRadius = 14;
constexpr int kLeastAir = 40; // of the window's height, above and below together

// Where both can't be, the top and the left are seen.
QRect movedInto(const QRect& room, QRect place) {
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveLeft(std::max(place.left(), room.left()));
    place.moveTop(std::max(place.top(), room.top()));
    return place;
}

} // namespace

Sheet::Sheet(QSize size, QWidget* over)
    : QDialog(over != nullptr ? over->window() : nullptr)
    , m_wanted(size) {
    setWindowModality(Qt::WindowModal);
    setFixedSize(size);
    if (SystemLook::isNative()) {
        setWindowFlag(Qt::Sheet);
    } else {
        setWindowFlag(Qt::FramelessWindowHint);
        setAttribute(Qt::WA_TranslucentBackground, SystemLook::blendsWindows()); // for the round corners
    }
    if (parentWidget() != nullptr) {
        parentWidget()->installEventFilter(this);
    }
}

Sheet::~Sheet() {
    delete m_scrim;
}

Sheet* Sheet::openOver(const QWidget& window) {
    const auto sheets = window.findChildren<Sheet*>(QString(), Qt::FindDirectChildrenOnly);
    const auto open = std::ranges::find_if(sheets, [](const Sheet* sheet) { return sheet->isVisible(); });
    return open == sheets.end() ? nullptr : *open;
}

bool Sheet::keepsWaiting(const QWidget& window, LibraryObserver& waiting) {
    auto* const sheet = openOver(window);
    if (sheet != nullptr) {
        connect(sheet, &QDialog::finished, &waiting, &LibraryObserver::schedule, Qt::UniqueConnection);
        connect(sheet, &QObject::destroyed, &waiting, &LibraryObserver::schedule, Qt::UniqueConnection);
    }
    return sheet != nullptr;
}

double Sheet::radius() {
    return SystemLook::isNative() ? 0 : kRadius;
}

QWidget* Sheet::scrim() const {
    return m_scrim;
}

void Sheet::setWantedSize(QSize size) {
    m_wanted = size;
    if (isVisible() && parentWidget() != nullptr) {
        arrange();
    } else {
        setFixedSize(size);
    }
}

void Sheet::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tokens.page);
    const double corner = testAttribute(Qt::WA_TranslucentBackground) ? radius() : 0;
    painter.drawRoundedRect(rect(), corner, corner);
}

void Sheet::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (!SystemLook::isNative() && !testAttribute(Qt::WA_TranslucentBackground)) {
        setMask(roundRegion(size(), kRadius));
    }
}

void Sheet::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() == nullptr) {
        return;
    }
    if (!SystemLook::isNative() && m_scrim == nullptr) {
        m_scrim = new Scrim(parentWidget());
        arrange();
    }
}

// A dialog takes every opening for a step by Tab. Whoever came by keyboard goes on by keyboard and wants to see
// where the focus is, and nobody else.
void Sheet::setVisible(bool visible) {
    if (visible && !isVisible() && parentWidget() != nullptr) {
        arrange();
    }
    QDialog::setVisible(visible);
    if (visible) {
        const auto* window = parentWidget();
        setAttribute(Qt::WA_KeyboardFocusChange,
                     window != nullptr && window->testAttribute(Qt::WA_KeyboardFocusChange));
    }
}

// Most window managers give the keyboard back to the window by themselves; without one nobody does.
void Sheet::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    delete m_scrim;
    if (parentWidget() != nullptr && !SystemLook::isNative() && !event->spontaneous()) {
        parentWidget()->activateWindow();
    }
}

bool Sheet::eventFilter(QObject* object, QEvent* event) {
    const bool moved = event->type() == QEvent::Move || event->type() == QEvent::Resize;
    if (object == parent() && moved && isVisible()) {
        arrange();
    }
    return QDialog::eventFilter(object, event);
}

QSize Sheet::fittingSize() const {
    const int room = std::min(parentWidget()->height() - kLeastAir,
                              parentWidget()->screen()->availableGeometry().height());
    return {m_wanted.width(), std::max(std::min(m_wanted.height(), room), minimumSizeHint().height())};
}

void Sheet::arrange() {
    setFixedSize(fittingSize());
    if (!SystemLook::isNative()) {
        centre();
    }
}

void Sheet::centre() {
    QRect place(QPoint(), size());
    place.moveCenter(parentWidget()->geometry().center());
    move(movedInto(parentWidget()->screen()->availableGeometry(), place).topLeft());
}

void SheetFooter::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    const double radius = Sheet::radius();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tokens.base);
    painter.setClipRect(rect());
    // Round below only: what overhangs at the top is clipped away.
    painter.drawRoundedRect(QRectF(rect()).adjusted(0, -radius, 0, 0), radius, radius);
    Hairline::fill(painter, QRect(0, 0, width(), 1), tokens.line);
}

} // namespace quillane
