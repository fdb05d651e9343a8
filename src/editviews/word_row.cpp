#include "editviews/word_row.h"

#include "lyrics/time_tags.h"
#include "toolkit/readable_colors.h"

#include <algorithm>
#include <vector>

namespace {

constexpr float kLineWidth = 2;

/** A part of the row in one colour. */
struct TPart {
  std::string text;
  rgb_color color;
};

bool are_equal(rgb_color a, rgb_color b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

std::vector<TPart> parts_of_row(const TTimedLine& line, const TWordRowLook& look) {
  const rgb_color quiet = quiet_color(look.text, look.background);
  std::vector<TPart> parts{{line.Lead(), quiet}};
  const auto add = [&parts](const std::string& text, rgb_color color) {
    if (!are_equal(parts.back().color, color)) parts.push_back({{}, color});
    parts.back().text += text;
  };
  if (line.CountUnits() == 0) add(line.Text(), look.text);
  for (size_t unit = 0; unit < line.CountUnits(); ++unit) add(line.TextOf(unit), line.TimeOf(unit) ? look.text : quiet);
  return parts;
}

std::string without_last_blanks(const std::string& text) {
  const size_t last = text.find_last_not_of(" \t");
  return last == std::string::npos ? text : text.substr(0, last + 1);
}

/** The mark's colour, so weak that text on it stays readable. */
rgb_color behind_text(const TWordRowLook& look) {
  constexpr int kShare = 3; // of 10
  const auto mix = [](uint8 mark, uint8 ground) {
    return static_cast<uint8>((mark * kShare + ground * (10 - kShare)) / 10);
  };
  return {mix(look.mark.red, look.background.red), mix(look.mark.green, look.background.green),
          mix(look.mark.blue, look.background.blue), 255};
}

/** Marks what is between two bytes of the text. */
class TMarker {
public:
  TMarker(BListView* view, const TTimedLine& line, const TWordRowLook& look) : fView(view), fLine(line), fLook(look) {
    view->GetFont(&fFont);
  }

  float XOf(size_t byte) const {
    return std::min(fLook.start.x + fFont.StringWidth(fLine.Lead() + fLine.Text().substr(0, byte)), fLook.right);
  }
  /** From its left to its right end, between two distances from the baseline. */
  void Fill(size_t unit, float top, float bottom, rgb_color color) const {
    const float left = XOf(fLine.StartOf(unit));
    const float width = fFont.StringWidth(without_last_blanks(fLine.TextOf(unit)));
    fView->SetHighColor(color);
    fView->FillRect({left, fLook.start.y + top, std::min(left + width, fLook.right), fLook.start.y + bottom});
  }
  void Caret(size_t byte) const {
    const float x = XOf(byte);
    fView->SetHighColor(fLook.text);
    fView->FillRect({x, fLook.start.y - fLook.font.ascent, x + 1, fLook.start.y + fLook.font.descent});
  }

private:
  BListView* const fView;
  const TTimedLine& fLine;
  const TWordRowLook& fLook;
  BFont fFont;
};

} // namespace

void draw_word_row(BListView* view, const TTimedLine& line, const TWordRow& row, const TWordRowLook& look) {
  const TMarker marker(view, line, look);
  if (row.sung) marker.Fill(*row.sung, -look.font.ascent, look.font.descent, behind_text(look));
  BFont font;
  view->GetFont(&font);
  float left = look.start.x;
  std::vector<TPart> parts = parts_of_row(line, look);
  std::erase_if(parts, [](const TPart& part) { return part.text.empty(); });
  for (size_t i = 0; i < parts.size(); ++i) {
    const float width = font.StringWidth(parts[i].text);
    const bool isCut = left + width > look.right;
    for (size_t j = i + 1; isCut && j < parts.size(); ++j) parts[i].text += parts[j].text;
    view->SetHighColor(parts[i].color);
    view->DrawRowText({parts[i].text, BPoint{left, look.start.y}, std::max(look.right - left, 1.0F)});
    if (isCut) break;
    left += width;
  }
  if (row.next && line.CountUnits() > 0) {
    marker.Fill(*row.next, look.font.descent - kLineWidth, look.font.descent, look.text);
    if (row.caret != line.StartOf(*row.next) && row.caret < line.Text().size()) marker.Caret(row.caret);
  }
}

std::string word_times_text(const TTimedLine& line, size_t next) {
  constexpr size_t kBefore = 3;
  const size_t first = next > kBefore ? next - kBefore : 0;
  std::string text = first > 0 ? " …" : "";
  for (size_t unit = first; unit < line.CountUnits(); ++unit) {
    std::string tag = "–";
    if (const auto timeMs = line.TimeOf(unit)) {
      time_to_time_tag(*timeMs, &tag, true);
      tag = tag.substr(1, tag.size() - 2);
    }
    text += " " + tag + " " + without_last_blanks(line.TextOf(unit)) + "  ";
  }
  return text;
}
