#include "platform/interface/key_text.h"

#include "platform/display/convert.h"
#include "platform/display/display_thread.h"

#include <QKeySequence>

std::vector<std::string> shown_keys(const std::vector<std::string>& keys) {
  const auto translate = [&keys] {
    std::vector<std::string> shown;
    shown.reserve(keys.size());
    for (const std::string& each : keys) {
      const QKeySequence sequence(display::to_qstring(each), QKeySequence::PortableText);
      shown.push_back(sequence.toString(QKeySequence::NativeText).toStdString());
    }
    return shown;
  };
  return display::call(translate, keys);
}
