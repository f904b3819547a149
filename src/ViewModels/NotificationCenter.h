#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

// The names by which parts of the program steer the window.
namespace NotificationName {
inline constexpr std::string_view kShowOnboarding = "Quillane.showOnboarding";
inline constexpr std::string_view kShowOverview = "Quillane.showOverview";
inline constexpr std::string_view kShowSection =
    "Quillane.showSection"; // object: the title of a LibrarySection
inline constexpr std::string_view kOpenSweepPreview = "Quillane.openSweepPreview";
} // namespace NotificationName

// Notifications inside the process: whoever posts knows nothing of who listens. Main thread only.
class NotificationCenter {
  public:
    using Object = std::optional<std::string>;
    using Handler = std::function<void(const Object&)>;

    // Holds a handler in the centre. Letting it go ends the subscription, also from within a handler; it may
    // outlive the centre.
    class Subscription {
      public:
        Subscription() = default;

      private:
        friend class NotificationCenter;
        explicit Subscription(std::shared_ptr<void> held)
            : m_held(std::move(held)) {}
        std::shared_ptr<void> m_held;
    };

    [[nodiscard]] Subscription observe(std::string_view name, Handler handler);
    // Calls the handlers of this name in the order of their joining, before it returns. Who joins meanwhile
    // is not told, who leaves meanwhile is not told any more.
    void post(std::string_view name, const Object& object = std::nullopt);

  private:
    struct Entry {
        std::string name;
        Handler handler;
    };
    std::vector<std::weak_ptr<Entry>> m_entries;
};

} // namespace quillane
