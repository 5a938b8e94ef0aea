#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Operations on text. All text is UTF-8; "bytes" are UTF-8 bytes, and a cut never falls inside a
/// character.
namespace korvenal::Text {

/// Without blanks and control characters (up to U+0020) at both ends.
std::string_view trim(std::string_view text);

/// Upper case by the rules of Unicode, for display and for the comparisons that ignore case.
std::string toUpper(std::string_view text);
std::string toLower(std::string_view text);
bool equalsIgnoreCase(std::string_view a, std::string_view b);
/// The characters with their case taken away, one for one. A byte that belongs to no well-formed
/// character becomes a value above U+10FFFF of its own.
std::u32string foldedCharacters(std::string_view text);

bool startsWith(std::string_view text, std::string_view prefix);
bool endsWith(std::string_view text, std::string_view suffix);
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);
/// The pieces between separators; an empty text gives one empty piece.
std::vector<std::string> split(std::string_view text, char separator);

/// True when the bytes are well-formed UTF-8 (no overlong forms, no surrogates).
bool isUtf8(std::string_view bytes);
/// The text behind the mark that editors of other systems put before it.
std::string_view withoutByteOrderMark(std::string_view text);
/// Bytes read as Latin-1, one character each, as UTF-8.
std::string fromLatin1(std::string_view bytes);
/// The longest beginning of whole characters that takes no more than `bytes` bytes.
std::string_view firstBytes(std::string_view text, std::size_t bytes);
/// The longest end of whole characters that takes no more than `bytes` bytes.
std::string_view lastBytes(std::string_view text, std::size_t bytes);
/// Substring counted in bytes: `length` bytes from `start` (1-based), cut at whole characters.
/// A result of one byte or less is empty.
std::string doMidBytes(std::string_view text, std::size_t start, std::size_t length);

/// The whole number that the text begins with (blanks before it ignored), saturating; 0 for none.
std::int64_t toInteger(std::string_view text);
/// Decimal digits with leading zeros up to `width`: (7, 3) gives "007".
std::string zeroPadded(std::int64_t number, int width);
/// Digits in groups of three: "1,234,567".
std::string grouped(std::int64_t number);
/// Grouped whole part and exactly one decimal, rounded half away from zero: "1,023.9".
std::string groupedOneDecimal(double number);
/// "file" for 1 and 0, "files" above 1, as the program's sentences count.
std::string counted(std::int64_t count, std::string_view noun);

/// The text with control characters shown as \t, \n, \xHH: a name in a sentence stays on its line,
/// and no terminal acts on it. A text that is escaped already stays as it is.
std::string escaped(std::string_view text);

}  // namespace korvenal::Text
