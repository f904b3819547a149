#include "PanelPlace.h"
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace quillane::PanelPlace {
namespace {

std::optional<QPoint> asTold(QPoint told, const std::vector<Screen>& screens) {
    const bool isOnScreen =
        std::ranges::any_of(screens, [&](const Screen& screen) { return screen.geometry.contains(told); });
    return isOnScreen ? std::optional(told) : std::nullopt;
}

// As if it had been told in the display's own pixels.
std::optional<QPoint> unscaled(QPoint told, const std::vector<Screen>& screens) {
    for (const auto& [geometry, scale] : screens) {
        const QPointF offset = QPointF(told - geometry.topLeft()) / scale;
        // Not rounded up, as the last pixels of a screen would lie outside.
        const QPoint place = geometry.topLeft() + QPoint(static_cast<int>(std::floor(offset.x())),
                                                         static_cast<int>(std::floor(offset.y())));
        if (geometry.contains(place)) {
            return place;
        }
    }
    return std::nullopt;
}

bool isScaled(const std::vector<Screen>& screens) {
    return std::ranges::any_of(screens, [](const Screen& screen) { return screen.scale != 1; });
}

} // namespace

std::optional<QPoint> placeOf(QPoint told, const std::vector<Screen>& screens,
                              std::optional<QPoint> pointer) {
    if (told.isNull()) {
        return std::nullopt;
    }
    const auto plain = asTold(told, screens);
    if (!pointer) {
        return plain;
    }
    const auto other = unscaled(told, screens);
    if (!plain || !other) {
        return plain ? plain : other;
    }
    const auto distance = [&](QPoint place) { return (place - *pointer).manhattanLength(); };
    return distance(*other) < distance(*plain) ? other : plain;
}

std::optional<QPoint> placeOf(QPoint told) {
    std::vector<Screen> screens;
    for (const auto* screen : QGuiApplication::screens()) {
        screens.push_back({screen->geometry(), screen->devicePixelRatio()});
    }
    // Elsewhere a program knows where the pointer was when it was last over one of its windows.
    const bool isPointerKnown = isScaled(screens) && QGuiApplication::platformName() == QLatin1String("xcb");
    return placeOf(told, screens, isPointerKnown ? std::optional(QCursor::pos()) : std::nullopt);
}

} // namespace quillane::PanelPlace
