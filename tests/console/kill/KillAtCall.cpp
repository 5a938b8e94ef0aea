// Preloaded into a program under test: kills it at a chosen call that changes a file. Calls are
// counted from 1 over all threads. The environment says which:
//   KORVENAL_KILL_AT     the number of the call; 0 or none: count only
//   KORVENAL_KILL_PATH   count only calls on paths that hold this text
//   KORVENAL_KILL_COUNT  a file that gets the number of calls when the program ends by itself
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

std::atomic<long> calls{0};

long killAt() {
  static const char* const text = std::getenv("KORVENAL_KILL_AT");
  return text != nullptr ? std::strtol(text, nullptr, 10) : 0;
}

bool isWatched(const char* path) {
  static const char* const part = std::getenv("KORVENAL_KILL_PATH");
  return part == nullptr || std::strstr(path, part) != nullptr;
}

void strike(const char* path) {
  if (path == nullptr || !isWatched(path)) return;
  if (++calls == killAt()) kill(getpid(), SIGKILL);
}

/// What the person sees, pipes and sockets do not count.
void strikeOpen(int file) {
  struct stat status {};
  if (file <= STDERR_FILENO || fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) return;
  char link[64], path[4096];
  std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
  const ssize_t length = readlink(link, path, sizeof path - 1);
  if (length <= 0) return;
  path[length] = '\0';
  strike(path);
}

template <typename Function>
Function next(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/// The mode of an `open`, which is there only when a file may be made.
mode_t modeOf(int flags, va_list more) {
  return (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
}

__attribute__((destructor)) void tellCount() {
  const char* path = std::getenv("KORVENAL_KILL_COUNT");
  FILE* file = path != nullptr ? std::fopen(path, "w") : nullptr;
  if (file == nullptr) return;
  std::fprintf(file, "%ld", calls.load());
  std::fclose(file);
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
  static const auto real = next<int (*)(const char*, int, ...)>("open");
  va_list more;
  va_start(more, flags);
  const mode_t mode = modeOf(flags, more);
  va_end(more);
  if ((flags & O_CREAT) != 0) strike(path);
  return real(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  static const auto real = next<int (*)(const char*, int, ...)>("open64");
  va_list more;
  va_start(more, flags);
  const mode_t mode = modeOf(flags, more);
  va_end(more);
  if ((flags & O_CREAT) != 0) strike(path);
  return real(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  static const auto real = next<int (*)(int, const char*, int, ...)>("openat");
  va_list more;
  va_start(more, flags);
  const mode_t mode = modeOf(flags, more);
  va_end(more);
  if ((flags & O_CREAT) != 0) strike(path);
  return real(folder, path, flags, mode);
}

ssize_t sendfile(int target, int source, off_t* offset, size_t count) {
  static const auto real = next<ssize_t (*)(int, int, off_t*, size_t)>("sendfile");
  strikeOpen(target);
  return real(target, source, offset, count);
}

ssize_t write(int file, const void* bytes, size_t count) {
  static const auto real = next<ssize_t (*)(int, const void*, size_t)>("write");
  strikeOpen(file);
  return real(file, bytes, count);
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t at) {
  static const auto real = next<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite");
  strikeOpen(file);
  return real(file, bytes, count, at);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t at) {
  static const auto real = next<ssize_t (*)(int, const void*, size_t, off64_t)>("pwrite64");
  strikeOpen(file);
  return real(file, bytes, count, at);
}

int fsync(int file) {
  static const auto real = next<int (*)(int)>("fsync");
  strikeOpen(file);
  return real(file);
}

int rename(const char* from, const char* to) {
  static const auto real = next<int (*)(const char*, const char*)>("rename");
  strike(from);
  return real(from, to);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) {
  static const auto real = next<int (*)(int, const char*, int, const char*)>("renameat");
  strike(from);
  return real(fromFolder, from, toFolder, to);
}

int unlink(const char* path) {
  static const auto real = next<int (*)(const char*)>("unlink");
  strike(path);
  return real(path);
}

}  // extern "C"
