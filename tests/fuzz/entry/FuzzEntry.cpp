#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzTargets.h"

// What libFuzzer calls. One program a target.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  korvenal::test::KORVENAL_FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
  return 0;
}
