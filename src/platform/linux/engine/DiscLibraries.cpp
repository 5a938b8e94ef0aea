#include "platform/linux/engine/DiscLibraries.h"

#include <libburn/libburn.h>
#include <libisofs/libisofs.h>

#include <array>

namespace korvenal {

namespace {

// The libraries take changeable strings that they do not change.
char* changeable(const char* text) {
  return const_cast<char*>(text);
}

/// "Write thread on drive N ended": the drive is truly idle from here on.
constexpr int WorkerEnded = 0x00020178;

/// Objects that need the libraries, whose own state is one for the whole process as well.
int holders = 0;

bool isAtLeast(const char* severity, const char* limit) {
  int number = 0;
  int least = 0;
  iso_text_to_sev(changeable(severity), &number);
  iso_text_to_sev(changeable(limit), &least);
  return number >= least;
}

/// The system's own refusals come as a lesser message in front of the failure that they cause.
bool isFailure(const char* severity, int osError) {
  return isAtLeast(severity, osError != 0 ? "SORRY" : "FAILURE");
}

}  // namespace

DiscLibraries::DiscLibraries() {
  if (holders > 0) {
    ++holders;
    ready_ = true;
    return;
  }
  // The locale is the program's business, not the library's.
  if (iso_init_with_flag(1) < 0) return;
  iso_set_local_charset(changeable("UTF-8"), 0);
  iso_set_msgs_severities(changeable("FAILURE"), changeable("NEVER"), changeable(""));
  // Without this an unreadable source is filled with zeros and the burn reports success.
  iso_set_abort_severity(changeable("MISHAP"));
  if (burn::burn_initialize() == 0) {
    iso_finish();
    return;
  }
  burn::burn_msgs_set_severities(changeable("DEBUG"), changeable("NEVER"), changeable(""));
  holders = 1;
  ready_ = true;
}

DiscLibraries::~DiscLibraries() {
  if (!ready_ || --holders > 0) return;
  takeFailures();
  burn::burn_finish();
  iso_finish();
}

bool DiscLibraries::takeBurnMessages(std::vector<LibraryMessage>& failures) {
  std::array<char, BURN_MSGS_MESSAGE_LEN> text{};
  std::array<char, 80> severity{};
  int code = 0;
  int osError = 0;
  int image = 0;
  bool ended = false;
  while (iso_obtain_msgs(changeable("FAILURE"), &code, &image, text.data(), severity.data()) == 1)
    failures.push_back({code, 0, text.data()});
  while (burn::burn_msgs_obtain(changeable("DEBUG"), &code, text.data(), &osError,
                                severity.data()) == 1) {
    if (code == WorkerEnded) ended = true;
    if (isFailure(severity.data(), osError)) failures.push_back({code, osError, text.data()});
  }
  return ended;
}

std::vector<LibraryMessage> DiscLibraries::takeFailures() {
  std::vector<LibraryMessage> failures;
  takeBurnMessages(failures);
  return failures;
}

}  // namespace korvenal
