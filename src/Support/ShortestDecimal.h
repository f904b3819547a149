#pragma once
#include <string>

namespace quillane {

// The fewest decimal digits from which a number reads back as the same number. Stands in for what the standard library
// of the oldest macOS that we run on lacks. Any thread.
class ShortestDecimal {
  public:
    // `value` is finite.
    explicit ShortestDecimal(double value);

    // "-120", "0.05", "0"
    std::string fixed() const;
    // "-1.2e+02", "5e-02", "0e+00": one digit before the point, two and more in the exponent.
    std::string scientific() const;
    // The shorter of the two, and the first where they are equally long.
    std::string shorter() const;

  private:
    bool m_isNegative;
    std::string m_digits; // without zeros at either end; "0" alone for zero
    int m_exponent;       // of ten, of the first digit
};

} // namespace quillane
