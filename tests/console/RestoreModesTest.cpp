#include <filesystem>

#include "console/ConsoleFixture.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;

class RestoreModes : public ConsoleFixture {
 protected:
  std::string restored(const std::string& path) const {
    return test::TempDir::read(target + "/" + path);
  }
  std::string backupScript() const {
    return "default ExcludeTopFolder 1\nnew Demo\nset comboDiscType 0\nadd '" + source +
           "'\nbackup\n";
  }
};

/// What stands in the target before, and what the person says.
struct ModeCase {
  const char* options;
  const char* answer;  ///< prepared; empty: none
  int hoursNewer;      ///< the existing file against the source
  bool replaced;
};

TEST_F(RestoreModes, AnExistingFileIsTreatedByTheMode) {
  temp.write("source/f", "new");
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  for (const ModeCase& given : {ModeCase{"--mode 0", "", 5, true},
                                {"--mode 1", "Yes", 5, true},
                                {"--mode 1", "No", -5, false},
                                {"--mode 2", "", 5, false},
                                {"--mode 2", "", -5, true},
                                {"--mode 3", "", -5, false}}) {
    SCOPED_TRACE(std::string(given.options) + given.answer);
    const std::string file = temp.write("target/f", "old");
    fs::last_write_time(file,
                        fs::last_write_time(source + "f") + std::chrono::hours(given.hoursNewer));
    const std::string said = *given.answer != 0 ? "answer " + std::string(given.answer) + "\n" : "";
    run("index\n" + said + "restore " + target + " " + given.options);
    EXPECT_EQ(restored("f"), given.replaced ? "new" : "old");
  }
}

}  // namespace
}  // namespace korvenal::console
