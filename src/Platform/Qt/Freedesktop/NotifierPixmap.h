#pragma once
#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>

namespace quillane {

// A picture as items of a panel send it: row by row from the top, four bytes for a point, which are its alpha, red,
// green and blue, not premultiplied.
struct NotifierPixmap {
    int width = 0; // pixels
    int height = 0;
    QByteArray bytes;
};

using NotifierPixmaps = QList<NotifierPixmap>;

// What a panel tells of an item under the pointer.
struct NotifierToolTip {
    QString iconName; // empty for none
    NotifierPixmaps pixmaps;
    QString title;
    QString text; // below the title, in the panel's markup
};

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& tip);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& tip);

// Makes the bus know them. Any thread, and as often as you like.
void registerNotifierTypes();

} // namespace quillane

Q_DECLARE_METATYPE(quillane::NotifierPixmap)
Q_DECLARE_METATYPE(quillane::NotifierToolTip)
