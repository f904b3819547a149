#include "StatusNotifierMenu.h"
#include <algorithm>
#include <utility>

namespace quillane {
namespace {

using Entry = MenuBarExtra::Entry;

const auto kEnabled = QStringLiteral("enabled");

// Panels take an underscore for the mark of a key, and two for one.
QString labelOf(const Entry& entry) {
    return QString::fromStdString(entry.words).replace(QLatin1Char('_'), QStringLiteral("__"));
}

QVariantMap allOf(const Entry& entry) {
    if (entry.words.empty()) {
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    }
    return {{QStringLiteral("label"), labelOf(entry)}, {kEnabled, entry.isEnabled}};
}

bool meanTheSame(const Entry& one, const Entry& other) {
    return one.id == other.id && one.words == other.words;
}

QVariantMap sifted(QVariantMap properties, const QStringList& names) {
    if (!names.isEmpty()) {
        properties.removeIf([&](const auto& property) { return !names.contains(property.key()); });
    }
    return properties;
}

} // namespace

StatusNotifierMenu::StatusNotifierMenu(QDBusConnection bus, Chosen chosen)
    : m_bus(std::move(bus))
    , m_chosen(std::move(chosen)) {
    registerNotifierMenuTypes();
    m_bus.registerObject(QString::fromLatin1(kPath), this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                             QDBusConnection::ExportAllProperties);
}

StatusNotifierMenu::~StatusNotifierMenu() {
    m_bus.unregisterObject(QString::fromLatin1(kPath));
}

void StatusNotifierMenu::setEntries(const Entries& entries) {
    const auto before = std::exchange(m_entries, entries);
    if (!std::ranges::equal(before, entries, meanTheSame)) {
        m_firstId += static_cast<int>(before.size());
        emit LayoutUpdated(++m_revision, kRoot);
        return;
    }
    NotifierMenuLines changed;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].isEnabled != before[i].isEnabled && !entries[i].words.empty()) {
            changed.append({.id = idOf(i), .properties = {{kEnabled, entries[i].isEnabled}}});
        }
    }
    if (!changed.isEmpty()) {
        emit ItemsPropertiesUpdated(changed, {});
    }
}

uint StatusNotifierMenu::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                                   NotifierMenuLayout& layout) {
    const auto properties = propertiesOf(parentId, propertyNames);
    if (!properties) {
        refuse(QStringLiteral("There is no such line."));
        return 0;
    }
    layout = {.id = parentId, .properties = *properties, .children = {}};
    if (parentId == kRoot && recursionDepth != 0) { // what is below 0 stands for all that there is
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            layout.children.append(
                {.id = idOf(i),
                 .properties = propertiesOf(idOf(i), propertyNames).value_or(QVariantMap()),
                 .children = {}});
        }
    }
    return m_revision;
}

// Each line once, however often it is named.
NotifierMenuLines StatusNotifierMenu::GetGroupProperties(const QList<int>& ids,
                                                         const QStringList& propertyNames) {
    NotifierMenuLines lines;
    const auto add = [&](int id) {
        if (ids.isEmpty() || ids.contains(id)) {
            lines.append({.id = id, .properties = propertiesOf(id, propertyNames).value_or(QVariantMap())});
        }
    };
    add(kRoot);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        add(idOf(i));
    }
    return lines;
}

QDBusVariant StatusNotifierMenu::GetProperty(int id, const QString& name) {
    const auto value = propertiesOf(id).value_or(QVariantMap()).value(name);
    if (!value.isValid()) {
        refuse(QStringLiteral("There is no such line, or it has no such property."));
    }
    return QDBusVariant(value);
}

void StatusNotifierMenu::Event(int id, const QString& eventId, const QDBusVariant& /*data*/,
                               uint /*timestamp*/) {
    if (!take(id, eventId)) {
        refuse(QStringLiteral("There is no such line."));
    }
}

QList<int> StatusNotifierMenu::EventGroup(const NotifierMenuEvents& events) {
    QList<int> unknown;
    for (const auto& event : events) {
        if (!take(event.id, event.kind)) {
            unknown.append(event.id);
        }
    }
    return unknown;
}

// Whatever it says is up to date.
bool StatusNotifierMenu::AboutToShow(int id) {
    if (id != kRoot && entryOf(id) == nullptr) {
        refuse(QStringLiteral("There is no such line."));
    }
    return false;
}

QList<int> StatusNotifierMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
    std::ranges::copy_if(ids, std::back_inserter(idErrors),
                         [this](int id) { return id != kRoot && entryOf(id) == nullptr; });
    return {};
}

const Entry* StatusNotifierMenu::entryOf(int id) const {
    const auto index = static_cast<std::size_t>(static_cast<std::int64_t>(id) - m_firstId);
    return id >= m_firstId && index < m_entries.size() ? &m_entries[index] : nullptr;
}

std::optional<QVariantMap> StatusNotifierMenu::propertiesOf(int id, const QStringList& names) const {
    if (id == kRoot) {
        return sifted({{QStringLiteral("children-display"), QStringLiteral("submenu")}}, names);
    }
    const auto* const entry = entryOf(id);
    return entry == nullptr ? std::nullopt : std::optional(sifted(allOf(*entry), names));
}

// False for a line that there is not. Of all that happens to one, only a click means something here.
bool StatusNotifierMenu::take(int id, const QString& event) {
    const auto* const entry = entryOf(id);
    const bool isChoice = entry != nullptr && entry->isEnabled && !entry->words.empty();
    if (isChoice && event == QLatin1String("clicked")) {
        m_chosen(entry->id);
    }
    return entry != nullptr || id == kRoot;
}

void StatusNotifierMenu::refuse(const QString& why) {
    if (calledFromDBus()) {
        sendErrorReply(QDBusError::InvalidArgs, why);
    }
}

} // namespace quillane
