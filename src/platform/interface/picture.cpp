#include "platform/interface/picture.h"

#include "platform/interface/picture_parts.h"

std::string BPicture::Text() const {
  std::string text;
  const picture_op* last = nullptr;
  for (const picture_op& op : ops) {
    if (op.what != picture_op::kind::string || !op.spoken.empty()) continue;
    if (!text.empty() && !continues_text(op, last)) text += ' ';
    text += op.text;
    last = &op;
  }
  return text;
}
