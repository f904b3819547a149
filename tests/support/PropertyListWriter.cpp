#include "PropertyListWriter.h"
#include "BigEndian.h"
#include <bit>
#include <cmath>
#include <cstddef>
#include <ctime>
#include <fmt/format.h>
#include <optional>
#include <string_view>

namespace quillane {
namespace {

template <class... Fs>
struct Overloaded : Fs... {
    using Fs::operator()...;
};
template <class... Fs>
Overloaded(Fs...) -> Overloaded<Fs...>;

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string base64(std::string_view bytes) {
    static constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const auto group = bytes.substr(i, 3);
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            bits = (bits << 8U) | (k < group.size() ? static_cast<unsigned char>(group[k]) : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text += k <= group.size() ? kDigits[(bits >> (18 - 6 * k)) & 63U] : '=';
        }
    }
    return text;
}

std::string isoDate(Date date) {
    const auto seconds = static_cast<std::time_t>(std::floor(date.secondsSince1970()));
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", parts.tm_year + 1900, parts.tm_mon + 1,
                       parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
}

void appendXml(std::string& xml, const Plist& node) {
    std::visit(Overloaded{
                   [&](const std::string& text) { xml += "<string>" + escaped(text) + "</string>\n"; },
                   [&](std::int64_t number) { xml += fmt::format("<integer>{}</integer>\n", number); },
                   [&](double number) { xml += fmt::format("<real>{}</real>\n", number); },
                   [&](bool truth) { xml += truth ? "<true/>\n" : "<false/>\n"; },
                   [&](Date date) { xml += "<date>" + isoDate(date) + "</date>\n"; },
                   [&](const Plist::Data& data) { xml += "<data>" + base64(data.bytes) + "</data>\n"; },
                   [&](const Plist::Array& elements) {
                       xml += "<array>\n";
                       for (const auto& element : elements) {
                           appendXml(xml, element);
                       }
                       xml += "</array>\n";
                   },
                   [&](const Plist::Dictionary& entries) {
                       xml += "<dict>\n";
                       for (const auto& [key, child] : entries) {
                           xml += "<key>" + escaped(key) + "</key>\n";
                           appendXml(xml, child);
                       }
                       xml += "</dict>\n";
                   },
               },
               node.value);
}

// The UTF-16 units of valid UTF-8, big-endian.
std::string utf16(std::string_view text) {
    std::string units;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        std::uint32_t point = length == 1 ? lead : lead & (0x7FU >> length);
        for (std::size_t k = 1; k < length; ++k) {
            point = (point << 6U) | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
        }
        if (point >= 0x10000) {
            appendBigEndian(units, 0xD800U + ((point - 0x10000) >> 10U), 2);
            point = 0xDC00U + ((point - 0x10000) & 0x3FFU);
        }
        appendBigEndian(units, point, 2);
        i += length;
    }
    return units;
}

// Numbers every object, children after their parent, and writes them out with two-byte references.
class BinaryWriter {
  public:
    std::string write(const Plist& root) {
        add(root);
        std::string bytes = "bplist00";
        std::string offsets;
        for (const auto& object : m_objects) {
            appendBigEndian32(offsets, static_cast<std::uint32_t>(bytes.size()));
            bytes += object;
        }
        const std::size_t table = bytes.size();
        bytes += offsets;
        bytes.append(6, '\0');
        bytes += '\4'; // width of an offset
        bytes += static_cast<char>(kReferenceWidth);
        for (const std::size_t number : {m_objects.size(), std::size_t{0}, table}) {
            appendBigEndian(bytes, number, 8);
        }
        return bytes;
    }

  private:
    static constexpr std::size_t kReferenceWidth = 2;

    static std::string marker(unsigned kind, std::size_t count) {
        std::string bytes;
        if (count < 15) {
            bytes += static_cast<char>((kind << 4U) | count);
        } else {
            bytes += static_cast<char>((kind << 4U) | 15U);
            bytes += '\x12'; // an integer of four bytes follows
            appendBigEndian32(bytes, static_cast<std::uint32_t>(count));
        }
        return bytes;
    }

    static std::string text(const std::string& value) {
        for (const char c : value) {
            if (static_cast<unsigned char>(c) >= 0x80) {
                const auto units = utf16(value);
                return marker(6, units.size() / 2) + units;
            }
        }
        return marker(5, value.size()) + value;
    }

    static std::string eightBytes(unsigned char lead, std::uint64_t bits) {
        std::string bytes(1, static_cast<char>(lead));
        appendBigEndian(bytes, bits, 8);
        return bytes;
    }

    std::size_t add(const Plist& node) {
        const std::size_t number = m_objects.size();
        m_objects.emplace_back();
        // Filled in afterwards: children enlarge the list of objects.
        std::string bytes = std::visit(
            Overloaded{
                [](const std::string& value) { return text(value); },
                [](std::int64_t value) { return eightBytes(0x13, static_cast<std::uint64_t>(value)); },
                [](double value) { return eightBytes(0x23, std::bit_cast<std::uint64_t>(value)); },
                [](bool value) { return std::string(1, value ? '\x09' : '\x08'); },
                [](Date value) {
                    return eightBytes(0x33, std::bit_cast<std::uint64_t>(value.secondsSinceReferenceDate));
                },
                [](const Plist::Data& value) { return marker(4, value.bytes.size()) + value.bytes; },
                [this](const Plist::Array& value) { return container(value); },
                [this](const Plist::Dictionary& value) { return container(value); },
            },
            node.value);
        m_objects[number] = std::move(bytes);
        return number;
    }

    std::string container(const Plist::Array& elements) {
        std::string bytes = marker(10, elements.size());
        for (const auto& element : elements) {
            appendBigEndian(bytes, add(element), kReferenceWidth);
        }
        return bytes;
    }

    std::string container(const Plist::Dictionary& entries) {
        std::string keys = marker(13, entries.size());
        std::string values;
        for (const auto& [key, value] : entries) {
            appendBigEndian(keys, add(Plist(key)), kReferenceWidth);
            appendBigEndian(values, add(value), kReferenceWidth);
        }
        return keys + values;
    }

    std::vector<std::string> m_objects;
};

} // namespace

std::string xmlPropertyList(const Plist& root) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                      "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                      "<plist version=\"1.0\">\n";
    appendXml(xml, root);
    return xml + "</plist>\n";
}

std::string binaryPropertyList(const Plist& root) {
    return BinaryWriter().write(root);
}

} // namespace quillane
