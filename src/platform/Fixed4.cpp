#include "platform/Fixed4.h"

#include <cstdlib>

#include "platform/Text.h"

namespace korvenal {

Fixed4 Fixed4::parse(std::string_view text) {
  text = Text::trim(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);

  Fixed4 whole;
  std::size_t at = 0;
  std::int64_t digits = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
    if (digits <= MaxWhole) digits = digits * 10 + (text[at] - '0');
  whole = Fixed4(digits);

  std::int64_t fraction = 0;
  if (at < text.size() && text[at] == '.') {
    std::int64_t place = Scale / 10;
    for (++at; at < text.size() && text[at] >= '0' && text[at] <= '9' && place > 0; ++at) {
      fraction += (text[at] - '0') * place;
      place /= 10;
    }
  }
  const Fixed4 value = whole + ofRaw(fraction);
  return negative ? ofRaw(-value.raw_) : value;
}

std::string Fixed4::toText() const {
  std::string text = std::to_string(whole());
  std::int64_t fraction = std::abs(raw_ % Scale);
  if (fraction == 0) return text;
  if (raw_ < 0 && whole() == 0) text.insert(0, 1, '-');
  std::string decimals = std::to_string(Scale + fraction).substr(1);
  decimals.erase(decimals.find_last_not_of('0') + 1);
  return text + "." + decimals;
}

}  // namespace korvenal
