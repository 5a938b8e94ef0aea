#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "fuzz/FuzzTargets.h"

// Files in memory: a search is not to wait for a disk at every input.
extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
  if (access("/dev/shm", W_OK) == 0) setenv("TMPDIR", "/dev/shm", 0);
  return 0;
}

// What libFuzzer calls. One program a target.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  korvenal::test::KORVENAL_FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
  return 0;
}
