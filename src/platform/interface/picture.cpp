#include "platform/interface/picture.h"

std::string BPicture::Text() const {
  std::string text;
  for (const picture_op& op : ops) {
    if (op.what != picture_op::kind::string || !op.spoken.empty()) continue;
    if (!text.empty()) text += ' ';
    text += op.text;
  }
  return text;
}
