#pragma once
#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// What goes over the bus of a menu, in the shapes of "com.canonical.dbusmenu".
namespace quillane {

// "(ia{sv}av)": a line of a menu, or the menu itself, with the lines in it.
struct NotifierMenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<NotifierMenuLayout> children;
};

// "(ia{sv})"
struct NotifierMenuLine {
    int id = 0;
    QVariantMap properties;
};

// "(ias)": the properties that a line has lost.
struct NotifierMenuLoss {
    int id = 0;
    QStringList names;
};

// "(isvu)": what has happened to a line.
struct NotifierMenuEvent {
    int id = 0;
    QString kind;
    QDBusVariant data;
    uint timestamp = 0;
};

using NotifierMenuLines = QList<NotifierMenuLine>;
using NotifierMenuLosses = QList<NotifierMenuLoss>;
using NotifierMenuEvents = QList<NotifierMenuEvent>;

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierMenuLine& line);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierMenuLine& line);
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierMenuLoss& loss);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierMenuLoss& loss);
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierMenuEvent& event);

// Makes the bus know them. Any thread, and as often as you like.
void registerNotifierMenuTypes();

} // namespace quillane

Q_DECLARE_METATYPE(quillane::NotifierMenuLayout)
Q_DECLARE_METATYPE(quillane::NotifierMenuLine)
Q_DECLARE_METATYPE(quillane::NotifierMenuLoss)
Q_DECLARE_METATYPE(quillane::NotifierMenuEvent)
