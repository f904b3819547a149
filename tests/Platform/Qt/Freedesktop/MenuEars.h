#pragma once
#include "NotifierMenu.h"
#include "StatusNotifierMenu.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quillane {

// What a panel hears of a menu.
class MenuEars : public QObject {
    Q_OBJECT
  public:
    explicit MenuEars(QDBusConnection bus) {
        const auto hear = [&](const char* signal, const char* slot) {
            EXPECT_TRUE(bus.connect(QString(), QString::fromLatin1(StatusNotifierMenu::kPath),
                                    QStringLiteral("com.canonical.dbusmenu"), QString::fromLatin1(signal),
                                    this, slot));
        };
        hear("LayoutUpdated", SLOT(hearLayout(uint, int)));
        hear("ItemsPropertiesUpdated", SLOT(hearProperties(QDBusMessage)));
    }
    QList<uint> revisions;
    QList<NotifierMenuLine> changes;
    std::vector<std::string> signatures;

  private slots:
    void hearLayout(uint revision, int parent) {
        EXPECT_EQ(parent, 0);
        revisions.append(revision);
    }
    void hearProperties(const QDBusMessage& signal) {
        signatures.push_back(signal.signature().toStdString());
        changes += qdbus_cast<NotifierMenuLines>(signal.arguments().value(0));
        EXPECT_TRUE(qdbus_cast<NotifierMenuLosses>(signal.arguments().value(1)).isEmpty());
    }
};

} // namespace quillane
