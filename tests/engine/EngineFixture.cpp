#include "engine/EngineFixture.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <thread>

namespace korvenal::test {

void EngineFixture::restart(int drives) {
  disc.reset();
  engine.reset();
  shelf = std::make_unique<ImageShelf>(
      files, ImageShelf::Options{dir / "shelf", drives, /*feeder=*/false});
  engine = std::make_unique<Engine>(clock, shelf->drives(), calls);
  disc = std::make_unique<EngineDiscFiles>(*engine);
  engine->do_InitializeASPI(0, "1", 0, "1");
}

void EngineFixture::blank(std::uint8_t type, std::int64_t blocks) {
  ASSERT_TRUE(shelf->insertBlank('V', type, "disc", blocks));
  ASSERT_NE(engine->do_SelectDeviceByLetter('V'), 0);
}

Ending EngineFixture::burn(const std::function<void()>& during) {
  Ending end;
  end.started =
      engine->do_Burn(
          [&](std::int32_t error, std::int32_t) {
            end.error = error;
            end.finished = true;
          },
          [&](std::int32_t, std::int32_t) { ++end.fileErrors; }, 0, dir / "burn.log") != 0;
  while (end.started && !end.finished) {
    if (during) during();
    std::this_thread::yield();
    engine->do_Deliver();
  }
  return end;
}

Ending EngineFixture::erase() {
  Ending end;
  end.started = engine->do_EraseDisc(-1, [&](std::int32_t error, std::int32_t) {
    end.error = error;
    end.finished = true;
  }) != 0;
  while (end.started && !end.finished) engine->do_Deliver();
  return end;
}

std::vector<std::string> EngineFixture::unsaved() {
  std::vector<std::string> paths;
  for (const FileFault& fault : engine->do_GetSkippedFiles()) paths.push_back(fault.discPath);
  return paths;
}

std::string EngineFixture::readDisc(const std::string& discPath) {
  const auto stream = disc->open('V', discPath);
  if (!stream) return "<missing>";
  std::string content(static_cast<std::size_t>(stream->info().size.whole()), '\0');
  const std::int64_t got = stream->read(0, content.data(), content.size());
  return got == static_cast<std::int64_t>(content.size()) ? content : "<unreadable>";
}

std::string EngineFixture::run(const std::vector<std::string>& words) {
  std::array<int, 2> pipe{};
  if (::pipe(pipe.data()) != 0) return "no pipe";
  // Without a locale of UTF-8, other readers show names by numbers.
  std::string env = "env";
  std::string locale = "LC_ALL=C.UTF-8";
  std::vector<char*> arguments = {env.data(), locale.data()};
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(pipe[1], STDOUT_FILENO);
    ::dup2(pipe[1], STDERR_FILENO);
    ::close(pipe[0]);
    ::close(pipe[1]);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
  }
  ::close(pipe[1]);
  std::string output;
  std::array<char, 65536> piece{};
  for (ssize_t got = 0; (got = ::read(pipe[0], piece.data(), piece.size())) > 0;)
    output.append(piece.data(), static_cast<std::size_t>(got));
  ::close(pipe[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  return std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1) + "\n" + output;
}

}  // namespace korvenal::test
