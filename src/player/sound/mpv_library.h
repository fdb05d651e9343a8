#pragma once

#include <mpv/client.h>

/** The audio library, loaded lazily: its more than one hundred dependencies take longer to load than the rest of the
    start. */
struct TMpvLibrary {
  decltype(&mpv_create) create;
  decltype(&mpv_initialize) initialize;
  decltype(&mpv_terminate_destroy) terminate_destroy;
  decltype(&mpv_set_option_string) set_option_string;
  decltype(&mpv_command_async) command_async;
  decltype(&mpv_command_ret) command_ret;
  decltype(&mpv_free_node_contents) free_node_contents;
  decltype(&mpv_set_property_async) set_property_async;
  decltype(&mpv_set_property_string) set_property_string;
  decltype(&mpv_get_property) get_property;
  decltype(&mpv_get_property_string) get_property_string;
  decltype(&mpv_get_property_async) get_property_async;
  decltype(&mpv_observe_property) observe_property;
  decltype(&mpv_free) free;
  decltype(&mpv_wait_event) wait_event;
  decltype(&mpv_wakeup) wakeup;
  decltype(&mpv_error_string) error_string;
};

/** Null, and an error in the log, if the library is missing. Stays loaded. Thread-safe. */
const TMpvLibrary* mpv_library();
