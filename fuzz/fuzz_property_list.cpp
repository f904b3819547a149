#include "PropertyList.h"
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <variant>

using namespace quillane;

namespace {

// Null, sets, references and dictionaries with keys that are no text: nothing that anybody could take for a value.
void expectNoCast(const PropertyList::Value& value) {
    if (PropertyList::asInt(&value) || PropertyList::asDouble(&value) || PropertyList::asString(&value) ||
        PropertyList::asStringArray(&value) || PropertyList::asDate(&value) || PropertyList::asData(&value) ||
        PropertyList::asArray(&value) || PropertyList::asDictionary(&value)) {
        __builtin_trap();
    }
}

// Casts every value there is, as the services would.
void castAll(const PropertyList::Value& value) {
    if (std::holds_alternative<PropertyList::Opaque>(value.variant())) {
        expectNoCast(value);
    }
    static_cast<void>(PropertyList::asBool(&value));
    static_cast<void>(PropertyList::asDouble(&value));
    static_cast<void>(PropertyList::asString(&value));
    static_cast<void>(PropertyList::asStringArray(&value));
    static_cast<void>(PropertyList::asDate(&value));
    if (const auto* array = PropertyList::asArray(&value)) {
        for (const auto& element : *array) {
            castAll(element);
        }
    }
    if (const auto* dictionary = PropertyList::asDictionary(&value)) {
        for (const auto& entry : dictionary->entries()) {
            // A key that is listed is found, at its own value.
            if (dictionary->find(entry.key) != &entry.value) {
                __builtin_trap();
            }
            castAll(entry.value);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const auto list = PropertyList::parse({reinterpret_cast<const char*>(bytes), size});
    if (list) {
        castAll(*list);
    } else if (list.error().code != ErrorCode::kUnreadable) {
        __builtin_trap();
    }
    return 0;
}
