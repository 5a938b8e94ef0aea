#pragma once

#include <compare>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace korvenal {

/// A 64-bit fixed-point number with four decimals: all byte sizes and byte positions.
/// The value n is stored as n * 10000, so a whole number of bytes stays exact. Arithmetic
/// saturates at the limits of the type (some 922 million million) and never overflows.
class Fixed4 {
 public:
  static constexpr std::int64_t Scale = 10000;
  static constexpr std::int64_t MaxWhole = std::numeric_limits<std::int64_t>::max() / Scale;

  constexpr Fixed4() = default;
  /// A whole number (of bytes, say).
  constexpr Fixed4(
      std::int64_t whole)  // NOLINT(google-explicit-constructor): sizes read as numbers
      : raw_(whole > MaxWhole    ? RawMax
             : whole < -MaxWhole ? -RawMax
                                 : whole * Scale) {}

  /// The stored 64-bit value, n * 10000.
  static constexpr Fixed4 ofRaw(std::int64_t raw) {
    Fixed4 value;
    value.raw_ = raw;
    return value;
  }
  /// The number that the text begins with, blanks before it ignored; 0 when it begins with none.
  static Fixed4 parse(std::string_view text);

  constexpr std::int64_t raw() const { return raw_; }
  /// The whole part, cut towards zero.
  constexpr std::int64_t whole() const { return raw_ / Scale; }
  constexpr double toDouble() const { return static_cast<double>(raw_) / Scale; }
  /// Decimal text, without decimals for a whole number and without trailing zeros otherwise.
  std::string toText() const;

  constexpr auto operator<=>(const Fixed4&) const = default;  // NOLINT(modernize-use-nullptr)
  friend constexpr Fixed4 operator+(Fixed4 a, Fixed4 b) { return saturatedSum(a.raw_, b.raw_); }
  friend constexpr Fixed4 operator-(Fixed4 a, Fixed4 b) { return saturatedSum(a.raw_, -b.raw_); }
  constexpr Fixed4& operator+=(Fixed4 other) { return *this = *this + other; }
  constexpr Fixed4& operator-=(Fixed4 other) { return *this = *this - other; }

 private:
  static constexpr std::int64_t RawMax = std::numeric_limits<std::int64_t>::max();

  static constexpr Fixed4 saturatedSum(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) sum = a > 0 ? RawMax : -RawMax;
    return ofRaw(sum);
  }

  std::int64_t raw_ = 0;
};

}  // namespace korvenal
