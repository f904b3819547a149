#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>

// The encodings that documents name themselves, such as "iso-8859-2", "koi8-r" or "windows-1252". Any thread.
namespace quillane::Charset {

inline constexpr std::size_t kLongestName = 40;

// `bytes` as UTF-8; a byte that the encoding does not have is U+FFFD. Nothing for a name that is not known. At most
// three bytes for each.
std::optional<std::string> decoded(std::string_view bytes, std::string_view name);

// The same for texts in many pieces, each of which begins anew: what an encoding needs is looked up once.
class Decoder {
  public:
    explicit Decoder(std::string_view name);
    ~Decoder();
    Decoder(Decoder&& other) noexcept;
    Decoder& operator=(Decoder&& other) noexcept;

    std::optional<std::string> decoded(std::string_view bytes);

  private:
    struct Converter;
    std::unique_ptr<Converter> m_converter; // null for a name that is not known
};

} // namespace quillane::Charset
