#include "platform/Pattern.h"

#include <gtest/gtest.h>

#include "platform/Walker.h"

namespace korvenal {

TEST(Pattern, StarsQuestionMarksAndCase) {
  struct Case {
    const char* name;
    const char* pattern;
    bool matches;
  };
  const Case cases[] = {
      {"photo.JPG", "*.jpg", true},
      {"photo.jpg.txt", "*.jpg", false},
      {"", "*", true},
      {"", "?", false},
      {"a", "", false},
      {"abcabc", "a*c", true},
      {"abcabd", "*b*c*d", true},
      {"aXbXc", "a*b?c*", true},
      {"ab", "a?b", false},
      {"*", "\\*", false},
      {"\xC3\x84rger.txt", "\xC3\xA4RGER.*", true},    // a with diaeresis, both cases
      {"\xCF\x83\xCF\x82", "\xCE\xA3\xCE\xA3", true},  // both small sigmas are one capital
      {"\xF0\x9F\x93\xB7", "?", true},                 // one character of four bytes
      {"\xC3\xA4", "??", false},
      {"\xFF.jpg", "?.jpg", true},  // a stray byte counts as a character
      {"\xFF", "\xFE", false},
  };
  for (const Case& c : cases)
    EXPECT_EQ(matchesPattern(c.name, c.pattern), c.matches) << c.name << " and " << c.pattern;
}

TEST(Pattern, ManyStarsDoNotExplode) {
  std::string pattern;
  for (int i = 0; i < 60; ++i) pattern += "*a";
  EXPECT_FALSE(matchesPattern(std::string(255, 'a'), pattern + "b"));
}

}  // namespace korvenal
