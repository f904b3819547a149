#include "IndexTable.h"
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quillane {
namespace {

// Texts by number, and a table that finds them: every hash the same, or that of the text.
class Texts {
    std::size_t hash(const std::string& text) const {
        return m_areHashesAlike ? 7 : std::hash<std::string>()(text);
    }
    auto has(const std::string& text) const {
        return [&](std::size_t number) { return m_texts[number] == text; };
    }

  public:
    Texts(std::size_t room, bool areHashesAlike)
        : m_table(room)
        , m_areHashesAlike(areHashesAlike) {}

    std::size_t numberOf(const std::string& text) {
        const auto number = m_table.findOrAdd(hash(text), m_texts.size(), has(text));
        if (number == m_texts.size()) {
            m_texts.push_back(text);
        }
        return number;
    }
    std::optional<std::size_t> find(const std::string& text) const {
        return m_table.find(hash(text), has(text));
    }

  private:
    IndexTable m_table;
    std::vector<std::string> m_texts;
    bool m_areHashesAlike;
};

} // namespace

TEST(IndexTable, EachKeyHasTheNumberThatItCameWithHoweverMuchHashesAreAlike) {
    for (const bool areHashesAlike : {false, true}) {
        Texts texts(100, areHashesAlike);
        for (std::size_t i = 0; i < 100; ++i) {
            EXPECT_EQ(texts.numberOf(std::to_string(i)), i);
        }
        for (std::size_t i = 0; i < 100; ++i) {
            EXPECT_EQ(texts.numberOf(std::to_string(i)), i);
            EXPECT_EQ(texts.find(std::to_string(i)), i);
        }
        EXPECT_EQ(texts.find("100"), std::nullopt);
    }
}

TEST(IndexTable, ATableWithoutRoomFindsNothing) {
    EXPECT_EQ(Texts(0, false).find("a"), std::nullopt);
    EXPECT_EQ(IndexTable().find(0, [](std::size_t) { return true; }), std::nullopt);
}

} // namespace quillane
