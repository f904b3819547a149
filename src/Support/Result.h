#pragma once
#include <optional>
#include <utility>
#include <variant>

namespace quillane {

// A failure as the platform tells it. Translated from errno in one function for each adapter.
struct PlatformError {
    int code = 0;                  // one of the codes below
    std::optional<int> underlying; // the errno, where there was one

    friend bool operator==(const PlatformError&, const PlatformError&) = default;
};

// The codes of the platform's file errors.
namespace ErrorCode {
inline constexpr int kNoSuchFileWriting = 4;
inline constexpr int kReadUnknown = 256;
inline constexpr int kReadNoPermission = 257;
inline constexpr int kReadInvalidName = 258;
inline constexpr int kReadNoSuchFile = 260;
inline constexpr int kReadTooLarge = 263;
inline constexpr int kWriteUnknown = 512;
inline constexpr int kWriteNoPermission = 513;
inline constexpr int kWriteInvalidName = 514;
inline constexpr int kWriteFileExists = 516;
inline constexpr int kWriteNoSpace = 640;
inline constexpr int kWriteReadOnlyVolume = 642;
inline constexpr int kUserCancelled = 3072;
inline constexpr int kFeatureUnsupported = 3328;
inline constexpr int kUnreadable = 3840; // a property list or JSON text that can't be parsed
} // namespace ErrorCode

// A value, or why there is none. Result<> carries no value.
template <class T = std::monostate>
class [[nodiscard]] Result {
  public:
    Result(T value)
        : m_value(std::in_place_index<0>, std::move(value)) {} // NOLINT(google-explicit-constructor)
    Result(PlatformError error)
        : m_value(std::in_place_index<1>, error) {} // NOLINT(google-explicit-constructor)

    bool ok() const { return m_value.index() == 0; }
    explicit operator bool() const { return ok(); }
    // Requires ok().
    const T& value() const& { return std::get<0>(m_value); }
    T& value() & { return std::get<0>(m_value); }
    T&& value() && { return std::get<0>(std::move(m_value)); }
    const T& operator*() const& { return value(); }
    T&& operator*() && { return std::get<0>(std::move(m_value)); }
    const T* operator->() const { return &value(); }
    T valueOr(T fallback) && { return ok() ? std::get<0>(std::move(m_value)) : std::move(fallback); }
    // Requires !ok().
    const PlatformError& error() const { return std::get<1>(m_value); }

  private:
    std::variant<T, PlatformError> m_value;
};

inline Result<> success() {
    return Result<>(std::monostate{});
}

} // namespace quillane
