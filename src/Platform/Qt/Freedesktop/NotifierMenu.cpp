#include "NotifierMenu.h"
#include <QDBusMetaType>

namespace quillane {

// NOLINTBEGIN(bugprone-return-const-ref-from-parameter): the form that Qt calls

// Lines stand in their menu as variants, as the bus knows no shape that holds itself.
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierMenuLayout& layout) {
    argument.beginStructure();
    argument << layout.id << layout.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const auto& child : layout.children) {
        argument << QDBusVariant(QVariant::fromValue(child));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierMenuLayout& layout) {
    layout.children.clear();
    argument.beginStructure();
    argument >> layout.id >> layout.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        layout.children.append(qdbus_cast<NotifierMenuLayout>(child.variant()));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierMenuLine& line) {
    argument.beginStructure();
    argument << line.id << line.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierMenuLine& line) {
    argument.beginStructure();
    argument >> line.id >> line.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierMenuLoss& loss) {
    argument.beginStructure();
    argument << loss.id << loss.names;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierMenuLoss& loss) {
    argument.beginStructure();
    argument >> loss.id >> loss.names;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierMenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.kind << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierMenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.kind >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

// NOLINTEND(bugprone-return-const-ref-from-parameter)

namespace {

// What is another name for a list, moc writes down as that name, by which the bus looks for it.
template <typename List>
void registerList(const char* name) {
    qRegisterMetaType<List>(name);
    qDBusRegisterMetaType<List>();
}

} // namespace

void registerNotifierMenuTypes() {
    qDBusRegisterMetaType<NotifierMenuLayout>();
    qDBusRegisterMetaType<NotifierMenuLine>();
    qDBusRegisterMetaType<NotifierMenuLoss>();
    qDBusRegisterMetaType<NotifierMenuEvent>();
    registerList<NotifierMenuLines>("quillane::NotifierMenuLines");
    registerList<NotifierMenuLosses>("quillane::NotifierMenuLosses");
    registerList<NotifierMenuEvents>("quillane::NotifierMenuEvents");
}

} // namespace quillane
