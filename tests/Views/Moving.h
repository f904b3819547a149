#pragma once
#include <QAbstractAnimation>
#include <QAbstractEventDispatcher>
#include <QObject>
#include <QStringList>

namespace quillane {

// Objects below this one that the event loop wakes for.
inline QStringList timed(const QObject& root) {
    QStringList names;
    for (auto* const object : root.findChildren<QObject*>()) {
        if (!QAbstractEventDispatcher::instance()->registeredTimers(object).isEmpty())
            names << object->metaObject()->className();
    }
    return names;
}

// What runs below this object, the parts of a group included.
inline QList<QAbstractAnimation*> moving(const QObject& root) {
    auto all = root.findChildren<QAbstractAnimation*>();
    all.removeIf([](auto* animation) { return animation->state() != QAbstractAnimation::Running; });
    return all;
}

// As if the time had passed that all motion takes.
inline void letMotionEnd(const QObject& root) {
    for (auto* const animation : moving(root))
        animation->setCurrentTime(animation->totalDuration());
}

} // namespace quillane
