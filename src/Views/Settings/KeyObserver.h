#pragma once
#include "Defaults.h"
#include <QObject>
#include <functional>
#include <string_view>

namespace quillane {

// Hears of changes under one key while it lives, whoever makes them. Main thread only.
class KeyObserver : public QObject {
    Q_OBJECT
  public:
    // `changed` may also come when the value is what it was. The defaults outlive this, and the key's text too.
    KeyObserver(Defaults& defaults, std::string_view key, std::function<void()> changed, QObject* parent);
    ~KeyObserver() override;

  private:
    Defaults& m_defaults;
    Defaults::SubscriptionId m_subscription;
};

} // namespace quillane
