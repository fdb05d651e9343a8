#include "platform/interface/font_families.h"

#include "platform/interface/font_metrics.h"

std::vector<std::string> font_families() {
  return display::families();
}
