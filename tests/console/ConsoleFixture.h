#pragma once

#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <sstream>

#include "console/ConsoleProgram.h"
#include "platform/Text.h"
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

/// The lines of a script; where a person is, a stop does not end them.
class ScriptLines : public StreamLines {
 public:
  ScriptLines(std::istream& lines, bool attended) : StreamLines(lines), attended_(attended) {}
  bool isAttended() const override { return attended_; }

 private:
  bool attended_;
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

/// The system's clock; something happens at every look at it. A burn that is waited for is looked
/// at by the clock.
class WatchedClock : public Clock {
 public:
  WatchedClock(const Clock& clock, std::function<void()> looked)
      : clock_(clock), looked_(std::move(looked)) {}
  UnixTime now() const override { return clock_.now(); }
  std::int64_t steadyMilliseconds() const override {
    if (looked_) looked_();
    return clock_.steadyMilliseconds();
  }

 private:
  const Clock& clock_;
  std::function<void()> looked_;
};

/// Notes why the machine was kept awake, and when it might sleep again.
class NotedPower : public PowerState {
 public:
  void stayAwake(const std::string& why) override { notes.push_back(why); }
  void allowSleep() override { notes.push_back("may sleep"); }
  std::vector<std::string> notes;
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
    ScriptLines commands(lines, !said.empty());
    const std::string app = temp.makeFolder("app") + "/";
    Workspace workspace = Workspace::below(app, app + "BIN/", temp.path());
    workspace.TempFolder = temp.makeFolder("scratch") + "/";
    LinuxPlatform platform(
        {app, {.folder = app + "Discs/", .drives = imageDrives, .feeder = feeder}});
    std::vector<Incident> incidents = whenPrinted;
    incidents.push_back({interruptAt, [this] { interrupted = true; }});
    const WatchedClock clock(platform.clock(), whileWaiting);
    EventfulText text(std::move(incidents));
    std::ostream out(&text);
    Person person(std::move(said));
    ConsoleProgram program(
        {.out = out, .person = person, .agreeToAll = yes, .interrupted = interrupted},
        platform.clock(),
        [&](Desktop& desktop) {
          const Ports all = platform.ports(desktop);
          return Ports{.files = all.files,
                       .targets = all.targets,
                       .walker = all.walker,
                       .archive = all.archive,
                       .archiveBits = all.archiveBits,
                       .engine = all.engine,
                       .devices = all.devices,
                       .trays = all.trays,
                       .desktop = all.desktop,
                       .clock = clock,
                       .power = power};
        },
        workspace);
    const ExitCode code = program.run(commands);
    return {code, text.str()};
  }

  /// Makes a job of the source folder and burns it.
  std::string backup(const std::string& options) const {
    return "new Demo\nset comboDiscType 0\nset AutoErase 0\nset FinalizeDisc 0\nadd '" + source +
           "'\n" + options + "backup\n";
  }
  /// Column of the newest disc record.
  std::string record(int column) {
    const std::string file = temp / "log.txt";
    run("export vsLog " + file);
    const auto lines = Text::split(test::TempDir::read(file), '\n');
    return lines.size() < 2 ? "" : Text::split(lines[1], '\t').at(static_cast<std::size_t>(column));
  }

  test::TempDir temp;
  std::string source;  ///< with '/' at the end
  std::string target;
  NotedPower power;
  int imageDrives = 1;
  bool feeder = true;
  std::string interruptAt;  ///< the person presses the interrupt key when this is printed
  std::vector<Incident> whenPrinted;
  std::function<void()> whileWaiting;  ///< called over and over while a disc is burned
  std::atomic<bool> interrupted = false;
};

}  // namespace korvenal::console
