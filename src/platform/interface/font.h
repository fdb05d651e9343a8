#pragma once

#include "platform/support/types.h"

#include <string>
#include <string_view>

/** Heights of one line of text, in pixels. */
struct font_height {
  float ascent = 0;
  float descent = 0;
  float leading = 0;

  friend bool operator==(const font_height&, const font_height&) = default;
};

enum : uint16 { B_REGULAR_FACE = 0, B_ITALIC_FACE = 0x1, B_BOLD_FACE = 0x20 };
enum : uint32 { B_DISABLE_ANTIALIASING = 0x1, B_FORCE_ANTIALIASING = 0x2 };

/** A font: a plain value. A family that is not installed is replaced by the system's default one; glyphs that a family
    lacks come from other families. Measuring blocks on the display thread (for heights once per font, then cached). */
class BFont {
public:
  /** The system's default font. */
  BFont() = default;

  /** Empty: the system's default family. */
  void SetFamily(std::string_view family) { fFamily = family; }
  void SetFamilyAndFace(std::string_view family, uint16 face);
  /** In points; 0 is the system's default size. */
  void SetSize(float points) { fSize = points; }
  void SetFace(uint16 face) { fFace = face; }
  void SetFlags(uint32 flags) { fFlags = flags; }

  const std::string& Family() const { return fFamily; }
  float Size() const { return fSize; }
  uint16 Face() const { return fFace; }
  uint32 Flags() const { return fFlags; }

  void GetHeight(font_height* height) const;
  float StringWidth(std::string_view text) const;

  friend bool operator==(const BFont&, const BFont&) = default;

private:
  std::string fFamily;
  float fSize = 0;
  uint16 fFace = B_REGULAR_FACE;
  uint32 fFlags = 0;
};

extern const BFont* const be_plain_font;
extern const BFont* const be_bold_font;
