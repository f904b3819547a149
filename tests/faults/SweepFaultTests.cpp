// Every call that the moves of a sweep make of the system fails in turn, with each error. What does not move
// stays at home and is told with the right word; what moved can be put back.
#include "FailingCall.h"
#include "ToldPlaces.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

template <class Adapters>
struct SweepFaults : testing::Test {
    static std::vector<std::string> items() {
        return {"Library/Caches/com.example.a", "Library/Caches/com.example.b", "Library/Logs/com.example.b"};
    }
    // A sweep whose moves alone see the fault: not what is stored after them.
    struct Sweep : Launch<Adapters> {
        explicit Sweep(const RealHome& home)
            : Launch<Adapters>(home) {
            this->library.tasks().start(
                [this, entries = entriesFor<Adapters>(home, items())](StopToken) -> Task<> {
                    report = co_await this->library.runSweep(entries, "Sweep");
                });
            this->runner.settle();
        }
        void move(int failing = -1, int error = 0) {
            {
                const FailingCall fault(failing, error);
                for (std::size_t i = 0; i < items().size(); ++i) {
                    this->runner.settle();
                    this->runner.runJob();
                }
                calls = fault.count();
                call = fault.name;
                what = fault.describe(error);
            }
            this->runner.runAll();
        }
        int calls = 0;
        std::string call;
        std::string what;
        std::optional<SweepReport> report;
    };
    static std::set<FileURL> moved(const AppLibrary& library) {
        std::set<FileURL> urls;
        if (const auto& operation = *library.lastOperation) {
            for (const auto& move : operation->moves) {
                urls.insert(move.from);
            }
        }
        return urls;
    }
};

using Kinds = testing::Types<PlainAdapters, DesktopAdapters>;
TYPED_TEST_SUITE(SweepFaults, Kinds);

TYPED_TEST(SweepFaults, EachCallThatFailsLeavesAtMostItsOwnItemAtHomeAndSaysSo) {
    using Sweep = typename TestFixture::Sweep;
    const auto callsOf = [] {
        const RealHome home;
        Sweep sweep(home);
        sweep.move();
        return sweep.calls;
    };
    const int calls = callsOf();
    ASSERT_GT(calls, 10);
    std::set<std::string> harmful; // calls whose failure kept an item at home
    for (const int error : kErrors) {
        if (error == EXDEV && TypeParam::kHasRecords) {
            continue; // is no failure: the item goes to the Trash at the top of its own volume
        }
        for (int failing = 0; failing < calls; ++failing) {
            const RealHome home;
            Sweep sweep(home);
            sweep.move(failing, error);
            SCOPED_TRACE(sweep.what);
            const auto& failures = sweep.report->failures;
            expectTold<TypeParam>(home, this->items(), urlsOf(failures), this->moved(sweep.library));
            ASSERT_LE(failures.size(), 1U);
            for (const auto& failure : failures) {
                harmful.insert(sweep.call);
                EXPECT_EQ(failure.isAccessDenied, isRefusal(error));
                EXPECT_EQ(failure.reason, isRefusal(error) ? "No access" : "Failed");
            }
            EXPECT_EQ(sweep.library.inaccessible->size(), isRefusal(error) ? failures.size() : 0U);
            if (TypeParam::kHasRecords) {
                EXPECT_TRUE(recordsWithoutItem(TypeParam::trashFolder(home)).empty());
            }
            EXPECT_TRUE(sweep.undo().failures.empty());
            for (const auto& item : this->items()) {
                EXPECT_TRUE(home.isHome(item)) << item;
            }
            if (this->HasFailure()) {
                return;
            }
        }
    }
    EXPECT_TRUE(harmful.contains("renameat2"));
    EXPECT_TRUE(harmful.contains("mkdirat"));
    EXPECT_EQ(harmful.contains("fsync"), TypeParam::kHasRecords);
}

} // namespace
} // namespace quillane
