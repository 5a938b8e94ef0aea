#include <gtest/gtest.h>

#include <QSvgRenderer>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "core/Workspace.h"
#include "ui/Theme.h"

// Holds that whatever the window asks for by name is there: icons and pages of the help.

namespace korvenal::ui {
namespace {

namespace fs = std::filesystem;

const fs::path Root = KORVENAL_SOURCE_DIR;

std::string textOf(const fs::path& file) {
  std::ifstream in(file);
  std::stringstream all;
  all << in.rdbuf();
  return all.str();
}

std::set<std::string> allMatches(const std::string& text, const std::regex& pattern) {
  std::set<std::string> found;
  for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at)
    found.insert((*at)[1]);
  return found;
}

std::string windowSources() {
  std::string all;
  for (const auto& entry : fs::recursive_directory_iterator(Root / "src/ui"))
    if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
      all += textOf(entry.path());
  return all;
}

/// What follows the calls that make an icon, up to the end of the statement, holds its name; tables
/// of names are known by the look of one.
std::set<std::string> iconNames(const std::string& sources) {
  std::set<std::string> names = allMatches(
      sources, std::regex(R"re((?:icon|ownIcon|fromTheme)\([^;"]*"([a-z][a-z0-9-]*)")re"));
  static const std::regex Known(
      R"re("((?:application|appointment|dialog|document|drive|edit|emblem|folder|go|help|image|list|media|object|preferences|process|security|system|task|text|tools|user|view|window|zoom)-[a-z0-9-]+)")re");
  names.merge(allMatches(sources, Known));
  return names;
}

bool isDrawn(const QIcon& icon) {
  const QImage image = icon.pixmap(24).toImage();
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) != 0) return true;
  return false;
}

TEST(Assets, EveryIconAskedForIsThereAndCanBeDrawn) {
  const std::set<std::string> names = iconNames(windowSources());
  ASSERT_GT(names.size(), 15U);
  for (const std::string& name : names) {
    const fs::path file = Root / "assets/icons" / (name + ".svg");
    EXPECT_TRUE(fs::exists(file)) << name;
    EXPECT_TRUE(isDrawn(Theme::ownIcon(QString::fromStdString(name)))) << name;
  }
}

TEST(Assets, IconsAreOfOneStyle) {
  for (const auto& entry : fs::directory_iterator(Root / "assets/icons")) {
    const std::string svg = textOf(entry.path());
    EXPECT_TRUE(QSvgRenderer(QByteArray::fromStdString(svg)).isValid()) << entry.path();
    if (entry.path().stem() == "korvenal") continue;
    EXPECT_NE(svg.find(R"(viewBox="0 0 24 24" fill="none" stroke="currentColor")"),
              std::string::npos)
        << entry.path();
  }
}

TEST(Assets, EveryHelpTopicAndLinkLeadsToAPage) {
  const Workspace workspace = Workspace::below("/app/", (Root / "assets").string(), "/home/");
  std::set<std::string> topics = allMatches(windowSources() + textOf(Root / "src/app/frmMain.cpp"),
                                            std::regex(R"re([sS]howHelp\("([^"]+)"\))re"));
  topics.insert("Backup Item Selector Window");
  EXPECT_GE(topics.size(), 7U);
  for (const std::string& topic : topics)
    EXPECT_TRUE(fs::exists(workspace.helpPage(topic))) << workspace.helpPage(topic);

  for (const auto& entry : fs::directory_iterator(Root / "assets/help"))
    for (const std::string& link :
         allMatches(textOf(entry.path()), std::regex(R"re((?:href|src)="([^"#:]+)")re")))
      EXPECT_TRUE(fs::exists(entry.path().parent_path() / link)) << entry.path() << " " << link;
}

TEST(Assets, TheChimeIsAShortSound) {
  const std::string wave =
      textOf(fs::path(KORVENAL_WINDOW).parent_path() / "../share/korvenal/BIN/CHIMES.WAV");
  ASSERT_GT(wave.size(), 44U);
  EXPECT_LT(wave.size(), 100'000U);
  EXPECT_EQ(wave.substr(0, 4) + wave.substr(8, 4), "RIFFWAVE");
}

}  // namespace
}  // namespace korvenal::ui
