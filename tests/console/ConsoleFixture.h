#pragma once

#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <sstream>

#include "console/ConsoleProgram.h"
#include "platform/linux/LinuxPlatform.h"
#include "support/TempDir.h"

namespace korvenal::console {

/// A person who says these lines and is then gone.
class Person : public LineSource {
 public:
  explicit Person(std::vector<std::string> lines = {}) : lines_(std::move(lines)) {}
  Got read(const std::string&, std::string& line) override {
    if (at_ == lines_.size()) return Got::End;
    line = lines_[at_++];
    return Got::Line;
  }
  bool isAttended() const override { return !lines_.empty(); }

 private:
  std::vector<std::string> lines_;
  std::size_t at_ = 0;
};

/// What happens when a line is printed that holds the text.
struct Incident {
  std::string text;  ///< empty: nothing
  std::function<void()> happens;
};

/// Text in whose lines incidents wait.
class EventfulText : public std::stringbuf {
 public:
  explicit EventfulText(std::vector<Incident> incidents) : incidents_(std::move(incidents)) {}

 protected:
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    const std::string_view written(text, static_cast<std::size_t>(length));
    for (const Incident& one : incidents_)
      if (!one.text.empty() && written.find(one.text) != std::string_view::npos) one.happens();
    return std::stringbuf::xsputn(text, length);
  }

 private:
  std::vector<Incident> incidents_;
};

/// How a script went.
struct Outcome {
  ExitCode code = ExitCode::Ok;
  std::string out;
};

/// The whole program over real files and image drives, all in one temporary folder. Every script
/// is a start of the program of its own; settings, records and discs stay from one to the next.
class ConsoleFixture : public testing::Test {
 protected:
  ConsoleFixture() {
    source = temp.makeFolder("source") + "/";
    target = temp.makeFolder("target");
  }

  Outcome run(const std::string& script, bool yes = true, std::vector<std::string> said = {}) {
    std::istringstream lines(script);
    StreamLines commands(lines);
    const std::string app = temp.makeFolder("app") + "/";
    Workspace workspace = Workspace::below(app, app + "BIN/", temp.path());
    workspace.TempFolder = temp.makeFolder("scratch") + "/";
    LinuxPlatform platform(
        {app, {.folder = app + "Discs/", .drives = imageDrives, .feeder = feeder}});
    EventfulText text({whenPrinted, {interruptAt, [this] { interrupted = true; }}});
    std::ostream out(&text);
    Person person(std::move(said));
    ConsoleProgram program(
        {.out = out, .person = person, .agreeToAll = yes, .interrupted = interrupted},
        platform.clock(), [&platform](Desktop& desktop) { return platform.ports(desktop); },
        workspace);
    const ExitCode code = program.run(commands);
    return {code, text.str()};
  }

  test::TempDir temp;
  std::string source;  ///< with '/' at the end
  std::string target;
  int imageDrives = 1;
  bool feeder = true;
  std::string interruptAt;  ///< the person presses the interrupt key when this is printed
  Incident whenPrinted;
  std::atomic<bool> interrupted = false;
};

}  // namespace korvenal::console
