#include "ui/Chime.h"

#include <canberra.h>

namespace korvenal::ui {

namespace {

constexpr std::uint32_t ChimeId = 1;

}  // namespace

Chime::~Chime() {
  if (context_ != nullptr) ca_context_destroy(context_);
}

void Chime::play(const std::string& file) {
  if (context_ == nullptr && ca_context_create(&context_) != CA_SUCCESS) {
    context_ = nullptr;
    return;
  }
  ca_context_cancel(context_, ChimeId);
  ca_context_play(context_, ChimeId, CA_PROP_MEDIA_FILENAME, file.c_str(), nullptr);
}

}  // namespace korvenal::ui
