#include "restore/IndexNames.h"

#include "plan/RunNames.h"
#include "platform/Text.h"
#include "platform/Walker.h"

namespace korvenal::IndexNames {

namespace {

// In pieces, so that no compiler takes "??-" for a trigraph.
constexpr const char* IndexPatterns[] = {
    "_KORVEN{*(????"
    "-??"
    "-??"
    "-??"
    "-??"
    "-?)}.bdx",
    "KORVEN{*(????"
    "-??"
    "-??"
    "-??"
    "-??"
    "-?)}.bdx"};
constexpr std::string_view NameHead = "KORVEN{";
constexpr std::string_view NameTail = "}.bdx";
constexpr std::size_t MinuteDigits = 12;

/// "202611221000" of "(2026-11-22-10-00-F)".
std::string digitsOf(std::string_view stamp) {
  std::string digits;
  for (const char c : stamp)
    if (c >= '0' && c <= '9') digits += c;
  return digits;
}

}  // namespace

bool isIndex(std::string_view fileName) {
  // Among a million names most are seen to be none by their ends.
  if (fileName.size() <= NameTail.size() ||
      !Text::equalsIgnoreCase(fileName.substr(fileName.size() - NameTail.size()), NameTail))
    return false;
  return matchesPattern(fileName, IndexPatterns[0]) || matchesPattern(fileName, IndexPatterns[1]);
}

std::string innerPart(std::string_view fileName) {
  if (fileName.starts_with('_')) fileName.remove_prefix(1);
  if (fileName.size() <= NameHead.size() + NameTail.size()) return {};
  fileName.remove_prefix(NameHead.size());
  fileName.remove_suffix(NameTail.size());
  return std::string(fileName);
}

std::string setName(std::string_view fileName) {
  if (!isIndex(fileName)) return {};
  std::string name = innerPart(fileName);
  return name.insert(name.size() - StampBytes, 1, ' ');
}

char typeOf(std::string_view fileName) {
  if (!isIndex(fileName)) return 0;
  const std::string name = innerPart(fileName);
  const char type = name[name.size() - 2];
  return type == 'F' || type == 'D' ? type : '\0';
}

bool isOf(std::string_view fileName, const SetIdentity& identity) {
  if (!identity.isKnown() || !isIndex(fileName) || typeOf(fileName) != identity.type) return false;
  const std::string name = innerPart(fileName);
  const std::string_view job =
      Text::trim(std::string_view(name).substr(0, name.size() - StampBytes));
  // An identity holds no more of a long name than fits.
  return digitsOf(name.substr(name.size() - StampBytes)) == identity.date.substr(0, MinuteDigits) &&
         job.starts_with(jobNameForFiles(identity.job));
}

}  // namespace korvenal::IndexNames
