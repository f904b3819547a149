#include "MetadataQuery.h"
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace quillane;

namespace {

constexpr std::string_view kTree[] = {"public.plain-text", "public.text", "public.data"};

// Every attribute has a value, and the texts come from the input.
class Item final : public MetadataItem {
  public:
    explicit Item(std::string_view text)
        : m_text(text) {}

    MetadataValue value(MetadataAttribute attribute) override {
        switch (attribute) {
        case MetadataAttribute::contentTypeTree:
            return std::span<const std::string_view>(kTree);
        case MetadataAttribute::size:
            return Bytes(1000);
        case MetadataAttribute::contentChangeDate:
        case MetadataAttribute::lastUsedDate:
            return Date{1};
        case MetadataAttribute::unknown:
            std::abort(); // never asked for
        default:
            return m_text;
        }
    }

  private:
    std::string_view m_text;
};

} // namespace

// What stands before the first NUL is the text that is searched, the rest the query.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    const auto nul = input.find('\0');
    const auto text = nul == input.npos ? std::string_view() : input.substr(0, nul);
    const auto query =
        MetadataQuery::parse(nul == input.npos ? input : input.substr(nul + 1), Date{800'000'000});
    if (query) {
        Item item(text);
        const bool answer = query->matches(item);
        if (query->matches(item) != answer) {
            std::abort(); // a query has no memory
        }
    }
    return 0;
}
