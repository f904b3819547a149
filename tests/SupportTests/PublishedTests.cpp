#include "Published.h"
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillane {
namespace {

// Notes every notification together with what the field held at that moment.
class Recorder final : public Observer {
  public:
    explicit Recorder(const Published<int>& field)
        : m_field(field) {}
    void track() {
        const Tracking tracking(*this);
        (void)m_field.get();
    }
    void fieldWillChange() override { events.push_back("before " + std::to_string(m_field.get())); }
    void fieldDidChange() override { events.push_back("after " + std::to_string(m_field.get())); }
    std::vector<std::string> events;

  private:
    const Published<int>& m_field;
};

class Counter : public Observer {
  public:
    virtual ~Counter() = default;
    void fieldDidChange() override { ++changes; }
    template <class... Fields>
    void track(const Fields&... fields) {
        const Tracking tracking(*this);
        ((void)fields.get(), ...);
    }
    int changes = 0;
};

struct Incomparable {
    int value = 0;
};
static_assert(!std::equality_comparable<std::optional<Incomparable>>);

using Events = std::vector<std::string>;

TEST(Published, ObserversHearBeforeAndAfterAStore) {
    Published<int> field(1);
    Recorder recorder(field);
    recorder.track();
    field = 2;
    EXPECT_EQ(recorder.events, (Events{"before 1", "after 2"}));
}

TEST(Published, AnEqualWholeValueNotifiesNobody) {
    Published<int> field(1);
    Recorder recorder(field);
    recorder.track();
    field = 1;
    EXPECT_TRUE(recorder.events.empty());
}

TEST(Published, AnInPlaceWriteOfAnEqualValueNotifies) {
    Published<int> field(1);
    Recorder recorder(field);
    recorder.track();
    field.modify([](int& value) { value = 1; });
    EXPECT_EQ(recorder.events, (Events{"before 1", "after 1"}));
}

TEST(Published, AValueWithoutEqualityAlwaysNotifies) {
    Published<std::optional<Incomparable>> field;
    Counter counter;
    counter.track(field);
    field = std::optional<Incomparable>{};
    field = std::optional<Incomparable>{};
    EXPECT_EQ(counter.changes, 2);
}

TEST(Published, NobodyHearsOfAFieldThatWasNotRead) {
    Published<int> read(1);
    Published<int> other(1);
    Counter counter;
    counter.track(read);
    other = 2;
    EXPECT_EQ(counter.changes, 0);
}

TEST(Published, ReadingTwiceIsHeardOnce) {
    Published<int> field(1);
    Counter counter;
    counter.track(field, field);
    field = 2;
    EXPECT_EQ(counter.changes, 1);
}

TEST(Published, TrackingAgainForgetsWhatIsNoLongerRead) {
    Published<int> first(1);
    Published<int> second(1);
    Counter counter;
    counter.track(first);
    counter.track(second);
    first = 2;
    EXPECT_EQ(counter.changes, 0);
    second = 2;
    EXPECT_EQ(counter.changes, 1);
}

TEST(Published, ReadsAfterTheTrackingAreNotObserved) {
    Published<int> field(1);
    Counter counter;
    counter.track();
    (void)field.get();
    field = 2;
    EXPECT_EQ(counter.changes, 0);
}

TEST(Published, AnInnerTrackingTakesTheReadsAndGivesThemBack) {
    Published<int> outerField(1);
    Published<int> innerField(1);
    Counter outer;
    Counter inner;
    {
        const Observer::Tracking outerTracking(outer);
        {
            const Observer::Tracking innerTracking(inner);
            (void)innerField.get();
        }
        (void)outerField.get();
    }
    innerField = 2;
    EXPECT_EQ(outer.changes, 0);
    EXPECT_EQ(inner.changes, 1);
    outerField = 2;
    EXPECT_EQ(outer.changes, 1);
    EXPECT_EQ(inner.changes, 1);
}

TEST(Published, AnObserverThatForgotHearsNothing) {
    Published<int> field(1);
    Counter counter;
    counter.track(field);
    counter.forgetFields();
    field = 2;
    EXPECT_EQ(counter.changes, 0);
}

TEST(Published, AnObserverMayBeDestroyedBeforeItsField) {
    Published<int> field(1);
    auto counter = std::make_unique<Counter>();
    counter->track(field);
    counter.reset();
    field = 2;
    EXPECT_EQ(*field, 2);
}

TEST(Published, AFieldMayBeDestroyedBeforeItsObserver) {
    Published<int> kept(1);
    Counter counter;
    {
        const Published<int> gone(1);
        counter.track(gone, kept);
    }
    kept = 2;
    EXPECT_EQ(counter.changes, 1);
}

// Tracks anew inside each notification, as a view does that redraws at once.
class Redrawing final : public Counter {
  public:
    explicit Redrawing(const Published<int>& field)
        : m_field(field) {}
    void fieldDidChange() override {
        Counter::fieldDidChange();
        track(m_field);
    }

  private:
    const Published<int>& m_field;
};

TEST(Published, AnObserverThatTracksAgainInsideANotificationHearsEachStoreOnce) {
    Published<int> field(1);
    Redrawing redrawing(field);
    redrawing.track(field);
    field = 2;
    field = 3;
    EXPECT_EQ(redrawing.changes, 2);
}

// Takes another observer away while the field tells.
class Remover final : public Counter {
  public:
    void fieldDidChange() override {
        Counter::fieldDidChange();
        victim.reset();
    }
    std::unique_ptr<Counter> victim;
};

TEST(Published, AnObserverDestroyedByAnotherInsideANotificationIsNotTold) {
    Published<int> field(1);
    Remover first;
    first.victim = std::make_unique<Counter>();
    Counter last;
    first.track(field);
    first.victim->track(field);
    last.track(field);
    field = 2;
    EXPECT_EQ(first.changes, 1);
    EXPECT_EQ(last.changes, 1);
    field = 3;
    EXPECT_EQ(last.changes, 2);
}

// Stores once more from inside a notification.
class Storing final : public Counter {
  public:
    explicit Storing(Published<int>& field)
        : m_field(field) {}
    void fieldDidChange() override {
        Counter::fieldDidChange();
        if (*m_field < 5) {
            m_field = 5;
        }
    }

  private:
    Published<int>& m_field;
};

TEST(Published, AStoreInsideANotificationIsToldToo) {
    Published<int> field(1);
    Storing storing(field);
    Counter other;
    storing.track(field);
    other.track(field);
    field = 2;
    EXPECT_EQ(storing.changes, 2);
    EXPECT_EQ(other.changes, 2);
    EXPECT_EQ(*field, 5);
}

} // namespace
} // namespace quillane
