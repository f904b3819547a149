#pragma once
#include "NotifierPixmap.h"
#include "StatusNotifierMenu.h"
#include <QDBusConnection>
#include <QObject>
#include <QPoint>
#include <QString>
#include <functional>
#include <optional>

namespace quillane {

// The program's item as panels find it on the bus, "org.kde.StatusNotifierItem". Whoever finds it may read it and
// click it, and choose from its menu; that panels look for it is StatusNotifierRegistration's. Main thread only; nothing waits.
class StatusNotifierItem final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconThemePath READ none)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(quillane::NotifierPixmaps IconPixmap READ iconPixmaps)
    Q_PROPERTY(QString OverlayIconName READ none)
    Q_PROPERTY(quillane::NotifierPixmaps OverlayIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionIconName READ none)
    Q_PROPERTY(quillane::NotifierPixmaps AttentionIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionMovieName READ none)
    Q_PROPERTY(quillane::NotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ isMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ none)

  public:
    static constexpr auto kPath = "/StatusNotifierItem";
    static constexpr qsizetype kLongestToken = 4'096; // characters; a longer one is none

    // Called within the panel's call, and not after this is gone. With the token that it gave before, empty for none.
    struct Handlers {
        // A click: where, in the panel's own coordinates.
        std::function<void(QPoint place, const QString& token)> pressed;
        // The id of an entry of the menu.
        std::function<void(int id, const QString& token)> chosen;
    };

    StatusNotifierItem(QDBusConnection bus, Handlers handlers);
    ~StatusNotifierItem() override;
    StatusNotifierItem(const StatusNotifierItem&) = delete;
    StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

    // "Quillane", and after it the figure, where there is one.
    static QString titleWith(const QString& figure);
    // Empty for none. Tells the panels when it changes.
    void setFigure(const QString& figure);
    // Empty for none. Tells the panels what changes.
    void setMenu(const StatusNotifierMenu::Entries& entries);

  public slots:
    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
    void ProvideXdgActivationToken(const QString& token);
    void Activate(int x, int y) { press(x, y); }
    void SecondaryActivate(int x, int y) { press(x, y); }
    void ContextMenu(int x, int y) { press(x, y); }
    void Scroll(int delta, const QString& orientation);

  signals:
    void NewTitle();
    void NewToolTip();
    void NewIcon();
    void NewAttentionIcon();
    void NewOverlayIcon();
    void NewStatus(const QString& status);
    void NewMenu();
    void XAyatanaNewLabel(const QString& label, const QString& guide);
    // NOLINTEND(readability-identifier-naming)

  private:
    void press(int x, int y);
    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return QStringLiteral("org.quillane.Quillane"); }
    QString title() const { return titleWith(m_figure); }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString none() const { return {}; }
    QString iconName() const { return m_iconName; }
    NotifierPixmaps iconPixmaps() const { return m_pixmaps; }
    NotifierPixmaps noPixmaps() const { return {}; }
    NotifierToolTip toolTip() const { return {{}, {}, title(), {}}; }
    bool isMenu() const { return false; }
    QDBusObjectPath menu() const;
    QString label() const { return m_figure; }

    QDBusConnection m_bus;
    Handlers m_handlers;
    StatusNotifierMenu m_menu;
    QString m_iconName;
    NotifierPixmaps m_pixmaps;
    QString m_figure;
    QString m_token; // for the click or the choice that comes next
};

} // namespace quillane
