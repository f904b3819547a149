// What holds for every place that announces versions, and for the fake that stands for it.
#include "FakeFeedSource.h"
#include "HttpsFeed.h"
#include "NetworkTest.h"
#include "StepTaskRunner.h"
#include <QTest>
#include <memory>
#include <string>
#include <vector>

using namespace quillane;

namespace {

constexpr std::size_t kMostBytes = 1'000;
constexpr int kPatience = 60'000; // milliseconds, for what comes at once

class Place {
  public:
    virtual ~Place() = default;
    virtual FeedSource& source() = 0;
    // To the fetch that runs.
    virtual void answer(const std::string& text) = 0;
    virtual bool waitFor(const std::function<bool()>& done) = 0;
};

class FakePlace final : public Place {
  public:
    FeedSource& source() override { return m_source; }
    void answer(const std::string& text) override { m_source.answer(text); }
    bool waitFor(const std::function<bool()>& done) override {
        m_runner.settle();
        return done();
    }

  private:
    StepTaskRunner m_runner;
    FakeFeedSource m_source{m_runner};
};

class HttpsPlace final : public Place {
  public:
    explicit HttpsPlace(FeedServer& server)
        : m_server(server)
        , m_source(server.address("/feed")) {}
    FeedSource& source() override { return m_source; }
    void answer(const std::string& text) override { m_server.on("/feed", FeedServer::page(text)); }
    bool waitFor(const std::function<bool()>& done) override { return QTest::qWaitFor(done, kPatience); }

  private:
    FeedServer& m_server;
    HttpsFeed m_source;
};

class FeedSourceContract : public NetworkTest, public testing::WithParamInterface<const char*> {
  protected:
    FeedSourceContract() {
        if (GetParam() == std::string("fake")) {
            m_place = std::make_unique<FakePlace>();
        } else {
            m_place = std::make_unique<HttpsPlace>(m_server);
        }
    }
    void fetch() {
        m_place->source().fetch(kMostBytes, [this](const auto& answer) { m_answers.push_back(answer); });
    }
    bool waitForAnswers(std::size_t count) {
        return m_place->waitFor([&] { return m_answers.size() == count; });
    }

    std::unique_ptr<Place> m_place;
    std::vector<FeedSource::Answer> m_answers;
};

} // namespace

TEST_P(FeedSourceContract, HandsOnWhatIsThereAtALaterTurn) {
    fetch();
    m_place->answer("text");
    EXPECT_TRUE(m_answers.empty());
    ASSERT_TRUE(waitForAnswers(1));
    EXPECT_EQ(m_answers[0], FeedSource::Answer(std::string("text")));
}

TEST_P(FeedSourceContract, TakesAsMuchAsItMayAndNoMore) {
    fetch();
    m_place->answer(std::string(kMostBytes, 'a'));
    ASSERT_TRUE(waitForAnswers(1));
    EXPECT_EQ(m_answers[0], FeedSource::Answer(std::string(kMostBytes, 'a')));
    fetch();
    m_place->answer(std::string(kMostBytes + 1, 'a'));
    ASSERT_TRUE(waitForAnswers(2));
    EXPECT_EQ(m_answers[1], FeedSource::Answer(FeedSource::Failure::tooLarge));
}

TEST_P(FeedSourceContract, NobodyHearsOfAFetchThatWasStopped) {
    bool wasHeard = false;
    m_place->source().fetch(kMostBytes, [&](const auto&) { wasHeard = true; });
    m_place->answer("text");
    m_place->source().stop();
    m_place->source().stop();
    fetch();
    m_place->answer("text");
    ASSERT_TRUE(waitForAnswers(1));
    EXPECT_FALSE(wasHeard);
}

TEST_P(FeedSourceContract, OfTwoFetchesTheLaterCounts) {
    bool wasHeard = false;
    m_place->source().fetch(kMostBytes, [&](const auto&) { wasHeard = true; });
    fetch();
    m_place->answer("text");
    ASSERT_TRUE(waitForAnswers(1));
    EXPECT_FALSE(wasHeard);
}

TEST_P(FeedSourceContract, TheNextFetchMayBeginWhenOneIsHandedOn) {
    m_place->source().fetch(kMostBytes, [this](const auto&) { fetch(); });
    m_place->answer("first");
    EXPECT_TRUE(m_place->waitFor([] { return true; }));
    m_place->answer("second");
    ASSERT_TRUE(waitForAnswers(1));
}

TEST_P(FeedSourceContract, MayGoWhileItFetches) {
    fetch();
    m_place->answer("text");
    m_place.reset();
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_answers.empty());
}

INSTANTIATE_TEST_SUITE_P(Sources, FeedSourceContract, testing::Values("fake", "https"),
                         [](const auto& source) { return source.param; });
