#include "platform/interface/font_families.h"

#include "platform/display/font_metrics.h"

std::vector<std::string> font_families() {
  return display::families();
}
