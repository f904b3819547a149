#include "LeftoverItem.h"

namespace quillane {
namespace {

LeftoverItem sample() {
    return {FileURL("/Users/ada/Library/Caches/com.example.editor"),
            "Caches",
            LeftoverItem::Confidence::high,
            4'096,
            false,
            true};
}

TEST(LeftoverItem, TheConfidenceSaysWhatTheMatchRestsOn) {
    EXPECT_EQ(rawValue(LeftoverItem::Confidence::high), "Bundle ID");
    EXPECT_EQ(rawValue(LeftoverItem::Confidence::medium), "Name");
}

TEST(LeftoverItem, AMatchByNameIsWorthLess) {
    EXPECT_LT(LeftoverItem::Confidence::medium, LeftoverItem::Confidence::high);
}

TEST(LeftoverItem, ItsIdentityIsItsPlace) {
    EXPECT_EQ(sample().id(), FileURL("/Users/ada/Library/Caches/com.example.editor"));
}

TEST(LeftoverItem, EveryFieldCountsForEqualityAndHash) {
    const auto changed = [](auto change) {
        LeftoverItem item = sample();
        change(item);
        return item;
    };
    const std::vector<LeftoverItem> others = {
        changed([](LeftoverItem& item) { item.url = FileURL("/elsewhere"); }),
        changed([](LeftoverItem& item) { item.category = "Logs"; }),
        changed([](LeftoverItem& item) { item.confidence = LeftoverItem::Confidence::medium; }),
        changed([](LeftoverItem& item) { item.bytes = 0; }),
        changed([](LeftoverItem& item) { item.requiresAdmin = true; }),
        changed([](LeftoverItem& item) { item.isCache = false; }),
    };
    const std::hash<LeftoverItem> hash;
    EXPECT_EQ(sample(), sample());
    EXPECT_EQ(hash(sample()), hash(sample()));
    for (std::size_t i = 0; i < others.size(); ++i) {
        EXPECT_NE(others[i], sample()) << i;
        EXPECT_NE(hash(others[i]), hash(sample())) << i;
    }
}

} // namespace
} // namespace quillane
