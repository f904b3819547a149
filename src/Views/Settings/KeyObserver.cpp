#include "Settings/KeyObserver.h"
#include <string>
#include <utility>

namespace quillane {

KeyObserver::KeyObserver(Defaults& defaults, std::string_view key, std::function<void()> changed,
                         QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_subscription(defaults.subscribe([key, changed = std::move(changed)](const std::string& changedKey) {
        if (changedKey == key) {
            changed();
        }
    })) {}

KeyObserver::~KeyObserver() {
    m_defaults.unsubscribe(m_subscription);
}

} // namespace quillane
