#pragma once
#include "MenuBarExtra.h"
#include "NotifierMenu.h"
#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <functional>
#include <optional>
#include <vector>

namespace quillane {

// The menu of the panel's item as panels find it on the bus, "com.canonical.dbusmenu", and draw it themselves. Whoever
// finds it may read it and choose from it; what stands for no line of it is answered with an error. Main thread only;
// nothing waits.
class StatusNotifierMenu final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

  public:
    static constexpr auto kPath = "/MenuBar";
    using Entries = std::vector<MenuBarExtra::Entry>;
    // The id of the entry. Called within the panel's call.
    using Chosen = std::function<void(int id)>;

    StatusNotifierMenu(QDBusConnection bus, Chosen chosen);
    ~StatusNotifierMenu() override;
    StatusNotifierMenu(const StatusNotifierMenu&) = delete;
    StatusNotifierMenu& operator=(const StatusNotifierMenu&) = delete;

    // Tells the panels what has changed. A line keeps its number on the bus only while it means the same, so that a
    // choice which was made before and comes after never means another line.
    void setEntries(const Entries& entries);
    bool isEmpty() const { return m_entries.empty(); }

  public slots:
    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   quillane::NotifierMenuLayout& layout);
    quillane::NotifierMenuLines GetGroupProperties(const QList<int>& ids, const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const quillane::NotifierMenuEvents& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

  signals:
    void LayoutUpdated(uint revision, int parent);
    void ItemsPropertiesUpdated(const quillane::NotifierMenuLines& updatedProps,
                                const quillane::NotifierMenuLosses& removedProps);
    // NOLINTEND(readability-identifier-naming)

  private:
    static constexpr int kRoot = 0; // the menu itself

    uint version() const { return 3; }
    QString status() const { return QStringLiteral("normal"); }
    QString textDirection() const { return QStringLiteral("ltr"); }
    QStringList iconThemePath() const { return {}; }

    int idOf(std::size_t index) const { return m_firstId + static_cast<int>(index); }
    const MenuBarExtra::Entry* entryOf(int id) const;
    // All of a line or of the menu, or those that are named; absent for what is neither.
    std::optional<QVariantMap> propertiesOf(int id, const QStringList& names = {}) const;
    bool take(int id, const QString& event);
    void refuse(const QString& why);

    QDBusConnection m_bus;
    Chosen m_chosen;
    Entries m_entries;
    int m_firstId = 1; // of the lines that there are; those before have gone
    uint m_revision = 1;
};

} // namespace quillane
