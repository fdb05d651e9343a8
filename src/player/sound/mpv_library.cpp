#include "player/sound/mpv_library.h"

#include "platform/support/log.h"

#include <dlfcn.h>

#include <clocale>
#include <optional>

namespace {

template <typename Function>
bool find(void* image, const char* name, Function* function) {
  *function = reinterpret_cast<Function>(dlsym(image, name));
  return *function != nullptr;
}

std::optional<TMpvLibrary> load() {
  // The library parses and prints numbers in the C locale only.
  std::setlocale(LC_NUMERIC, "C");
  void* const image = dlopen("libmpv.so.2", RTLD_NOW | RTLD_LOCAL);
  if (image == nullptr) {
    log_error("audio", dlerror());
    return std::nullopt;
  }
  TMpvLibrary library{};
  const bool complete =
      find(image, "mpv_create", &library.create) && find(image, "mpv_initialize", &library.initialize) &&
      find(image, "mpv_terminate_destroy", &library.terminate_destroy) &&
      find(image, "mpv_set_option_string", &library.set_option_string) &&
      find(image, "mpv_command_async", &library.command_async) &&
      find(image, "mpv_command_ret", &library.command_ret) &&
      find(image, "mpv_free_node_contents", &library.free_node_contents) &&
      find(image, "mpv_set_property_async", &library.set_property_async) &&
      find(image, "mpv_set_property_string", &library.set_property_string) &&
      find(image, "mpv_get_property", &library.get_property) &&
      find(image, "mpv_get_property_string", &library.get_property_string) &&
      find(image, "mpv_get_property_async", &library.get_property_async) &&
      find(image, "mpv_observe_property", &library.observe_property) && find(image, "mpv_free", &library.free) &&
      find(image, "mpv_wait_event", &library.wait_event) && find(image, "mpv_wakeup", &library.wakeup) &&
      find(image, "mpv_error_string", &library.error_string);
  if (complete) return library;
  log_error("audio", "libmpv.so.2 lacks a required function");
  return std::nullopt;
}

} // namespace

const TMpvLibrary* mpv_library() {
  static const std::optional<TMpvLibrary> library = load();
  return library ? &*library : nullptr;
}
