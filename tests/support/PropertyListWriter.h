#pragma once
#include "Date.h"
#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillane {

// A property list as a test writes it down, in the order it writes it:
//   Plist::dictionary({{"Label", "com.example.tool"}, {"Args", Plist::array({"a", 1, true})}})
struct Plist {
    struct Data {
        std::string bytes;
    };
    using Array = std::vector<Plist>;
    using Dictionary = std::vector<std::pair<std::string, Plist>>;

    std::variant<std::string, std::int64_t, double, bool, Date, Data, Array, Dictionary> value;

    Plist(const char* text) // NOLINT(google-explicit-constructor)
        : value(std::string(text)) {}
    Plist(std::string text) // NOLINT(google-explicit-constructor)
        : value(std::move(text)) {}
    Plist(int number) // NOLINT(google-explicit-constructor)
        : value(std::int64_t{number}) {}
    Plist(std::int64_t number) // NOLINT(google-explicit-constructor)
        : value(number) {}
    Plist(double number) // NOLINT(google-explicit-constructor)
        : value(number) {}
    Plist(bool truth) // NOLINT(google-explicit-constructor)
        : value(truth) {}
    Plist(Date date) // NOLINT(google-explicit-constructor)
        : value(date) {}
    Plist(Data data) // NOLINT(google-explicit-constructor)
        : value(std::move(data)) {}
    static Plist array(Array elements) { return Plist(std::move(elements)); }
    static Plist dictionary(Dictionary entries) { return Plist(std::move(entries)); }

  private:
    explicit Plist(Array elements)
        : value(std::move(elements)) {}
    explicit Plist(Dictionary entries)
        : value(std::move(entries)) {}
};

// The list as the platform's XML form, with its declaration and document type. Dates lose their fraction.
std::string xmlPropertyList(const Plist& root);
// The list as the platform's binary form. Texts are ASCII or UTF-16, nothing is shared.
std::string binaryPropertyList(const Plist& root);

} // namespace quillane
