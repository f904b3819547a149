#include "SparkleUpdater.h"
#include "FoundationValues.h"
#include "KeyObservation.h"
#include <array>
#include <utility>

// What this program calls of Sparkle 2, which is loaded and not linked.
@protocol QuillaneSparkleUpdater <NSObject>
@property(nonatomic) BOOL automaticallyChecksForUpdates;
@property(nonatomic, readonly) BOOL canCheckForUpdates;
@property(nonatomic, readonly, copy) NSDate* lastUpdateCheckDate; // nil before the first check
@end
@protocol QuillaneSparkleController <NSObject>
- (instancetype)initWithStartingUpdater:(BOOL)starts
                        updaterDelegate:(id)delegate
                     userDriverDelegate:(id)driverDelegate;
@property(nonatomic, readonly) NSObject<QuillaneSparkleUpdater>* updater;
- (void)checkForUpdates:(id)sender;
@end

namespace quillane {
namespace {

using Controller = id<QuillaneSparkleController>;

bool isTold(NSString* key) {
    const id value = [[NSBundle mainBundle] objectForInfoDictionaryKey:key];
    return [value isKindOfClass:[NSString class]] && [static_cast<NSString*>(value) length] > 0;
}

// Nil where the bundle has none. Without the key Sparkle would open an alert.
Controller startedController() {
    NSURL* const place =
        [[[NSBundle mainBundle] privateFrameworksURL] URLByAppendingPathComponent:@"Sparkle.framework"];
    if (place == nil || !isTold(@"SUFeedURL") || !isTold(@"SUPublicEDKey") ||
        ![[NSBundle bundleWithURL:place] loadAndReturnError:nullptr]) {
        return nil;
    }
    return [[NSClassFromString(@"SPUStandardUpdaterController") alloc] initWithStartingUpdater:YES
                                                                               updaterDelegate:nil
                                                                            userDriverDelegate:nil];
}

class SparkleUpdater final : public Updater {
  public:
    SparkleUpdater(TaskRunner& tasks, Controller controller)
        : m_tasks(tasks)
        , m_controller(controller)
        , m_updater([controller updater])
        , m_observations{observed(@"automaticallyChecksForUpdates"), observed(@"canCheckForUpdates"),
                         observed(@"lastUpdateCheckDate")} {}
    SparkleUpdater(const SparkleUpdater&) = delete;
    SparkleUpdater& operator=(const SparkleUpdater&) = delete;

    bool automaticallyChecksForUpdates() const override {
        return [m_updater automaticallyChecksForUpdates] != NO;
    }
    void setAutomaticallyChecksForUpdates(bool isOn) override {
        @autoreleasepool {
            [m_updater setAutomaticallyChecksForUpdates:isOn ? YES : NO];
            // It keeps the switch among the settings, which may reach their server later than this process ends.
            [[NSUserDefaults standardUserDefaults] synchronize];
        }
    }
    bool canCheckForUpdates() const override { return [m_updater canCheckForUpdates] != NO; }
    std::optional<Date> lastUpdateCheckDate() const override {
        @autoreleasepool {
            NSDate* const date = [m_updater lastUpdateCheckDate];
            return date == nil ? std::nullopt : std::optional(Date{[date timeIntervalSinceReferenceDate]});
        }
    }
    void checkForUpdates() override { [m_controller checkForUpdates:nil]; }
    std::optional<std::string> installedVersion() const override {
        @autoreleasepool {
            const id version =
                [[NSBundle mainBundle] objectForInfoDictionaryKey:@"CFBundleShortVersionString"];
            return [version isKindOfClass:[NSString class]] ? FoundationValues::bytes(version) : std::nullopt;
        }
    }
    void setChangeHandler(std::function<void()> changed) override { m_changed = std::move(changed); }

  private:
    std::unique_ptr<KeyObservation> observed(NSString* key) {
        return std::make_unique<KeyObservation>(m_updater, key, [this] { tellLater(); });
    }
    void tellLater() {
        m_tasks.post([self = std::weak_ptr(m_self)] {
            const auto updater = self.lock();
            if (const auto changed = updater ? (*updater)->m_changed : nullptr) {
                changed();
            }
        });
    }

    TaskRunner& m_tasks;
    Controller m_controller;
    NSObject<QuillaneSparkleUpdater>* m_updater;
    std::function<void()> m_changed;
    // Jobs hold it weakly and look at it on the main thread, where this is destroyed.
    std::shared_ptr<SparkleUpdater*> m_self = std::make_shared<SparkleUpdater*>(this);
    std::array<std::unique_ptr<KeyObservation>, 3> m_observations; // last: they use what stands above
};

} // namespace

std::unique_ptr<Updater> makeSparkleUpdater(TaskRunner& tasks) {
    @autoreleasepool {
        const Controller controller = startedController();
        return controller == nil ? nullptr : std::make_unique<SparkleUpdater>(tasks, controller);
    }
}

} // namespace quillane
