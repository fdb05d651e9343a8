#include "lyrics/word_units.h"

#include "platform/support/types.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

namespace {

/** What a character does to the cut. */
enum class TSign {
  kBlank,
  kOpening,   // belongs to the unit after it
  kAttached,  // belongs to the unit before it
  kTsu,       // small tsu: belongs to the Chinese or Japanese character after it, else to the unit before
  kCharacter, // a unit of its own
  kHangul,
  kComplex, // of a script without blanks between words, which ICU cuts by its dictionaries
  kLetter   // of a word
};

struct TChar {
  size_t at = 0; // in bytes
  UChar32 code = 0;
  TSign sign = TSign::kLetter;
  bool IsCore() const { return sign >= TSign::kTsu; }
  bool IsInWord() const { return sign >= TSign::kHangul; }
  bool IsCutByIcu() const { return sign == TSign::kHangul || sign == TSign::kComplex; }
};

bool is_blank(UChar32 code) {
  constexpr UChar32 kNoBreakSpaces[] = {0x00A0, 0x2007, 0x202F};
  constexpr UChar32 kMarks[] = {0x200B, 0x2060};
  if (std::ranges::find(kMarks, code) != std::end(kMarks)) return true;
  return u_isUWhiteSpace(code) && std::ranges::find(kNoBreakSpaces, code) == std::end(kNoBreakSpaces);
}

bool has(std::u32string_view set, UChar32 code) {
  return set.find(static_cast<char32_t>(code)) != std::u32string_view::npos;
}

bool is_small_tsu(UChar32 code) {
  return code == U'っ' || code == U'ッ' || code == U'ｯ';
}

/** Without the two small ke, which are read as whole words: "ヶ月". */
bool is_small_kana_or_long_mark(UChar32 code) {
  static constexpr std::u32string_view kSmall = U"ぁぃぅぇぉゃゅょゎァィゥェォャュョヮｧｨｩｪｫｬｭｮーｰﾞﾟ";
  return has(kSmall, code) || (code >= 0x31F0 && code <= 0x31FF);
}

/** By its script, for a character that is no mark. */
TSign sign_by_script(UChar32 code) {
  UErrorCode error = U_ZERO_ERROR;
  switch (uscript_getScript(code, &error)) {
  case USCRIPT_HAN:
  case USCRIPT_HIRAGANA:
  case USCRIPT_KATAKANA:
  case USCRIPT_BOPOMOFO:
    return TSign::kCharacter;
  case USCRIPT_HANGUL:
    return TSign::kHangul;
  case USCRIPT_THAI:
  case USCRIPT_LAO:
  case USCRIPT_KHMER:
  case USCRIPT_MYANMAR:
    return TSign::kComplex;
  default:
    return TSign::kLetter;
  }
}

bool is_attached(UChar32 code) {
  constexpr uint32_t kMasks = U_GC_M_MASK | U_GC_P_MASK | U_GC_CF_MASK | U_GC_CC_MASK;
  static constexpr std::u32string_view kSymbols = U"~～ๆໆ♩♪♫♬♭♮♯";
  static constexpr std::u32string_view kWords = U"&＆@＠#＃%％*";
  if (has(kWords, code)) return false;
  return (U_GET_GC_MASK(code) & kMasks) != 0 || has(kSymbols, code) || is_small_kana_or_long_mark(code) ||
         (code >= 0x1F3FB && code <= 0x1F3FF); // skin tones
}

bool is_opening(UChar32 code) {
  return (U_GET_GC_MASK(code) & (U_GC_PS_MASK | U_GC_PI_MASK)) != 0 || code == U'¿' || code == U'¡';
}

TSign sign_of(UChar32 code) {
  if (code < 0) return TSign::kLetter; // not valid UTF-8
  if (is_blank(code)) return TSign::kBlank;
  if (is_opening(code)) return TSign::kOpening;
  if (is_small_tsu(code)) return TSign::kTsu;
  return is_attached(code) ? TSign::kAttached : sign_by_script(code);
}

std::vector<TChar> chars_of(std::string_view text) {
  std::vector<TChar> chars;
  bool isQuoteOpen = false;
  const auto size = static_cast<int32_t>(text.size());
  for (int32_t at = 0; at < size;) {
    TChar next{static_cast<size_t>(at), 0};
    U8_NEXT(text.data(), at, size, next.code);
    next.sign = sign_of(next.code);
    if (next.code == U'"' || next.code == U'＂') {
      isQuoteOpen = !isQuoteOpen;
      next.sign = isQuoteOpen ? TSign::kOpening : TSign::kAttached;
    }
    chars.push_back(next);
  }
  return chars;
}

/** A small tsu counts as a character only if one follows. */
void settle_small_tsu(std::vector<TChar>* chars) {
  bool doesCharacterFollow = false;
  for (auto each = chars->rbegin(); each != chars->rend(); ++each) {
    if (each->sign == TSign::kTsu && !doesCharacterFollow) each->sign = TSign::kAttached;
    if (each->sign == TSign::kTsu || (each->sign == TSign::kAttached && u_getCombiningClass(each->code) > 0)) continue;
    doesCharacterFollow = each->sign == TSign::kCharacter;
  }
}

std::vector<size_t> breaks_in(std::string_view text, icu::BreakIterator* iterator) {
  UErrorCode error = U_ZERO_ERROR;
  const std::unique_ptr<UText, decltype(&utext_close)> bytes(
      utext_openUTF8(nullptr, text.data(), static_cast<int64_t>(text.size()), &error), utext_close);
  std::vector<size_t> breaks;
  if (!iterator || U_FAILURE(error)) return breaks;
  iterator->setText(bytes.get(), error);
  if (U_FAILURE(error)) return breaks;
  for (int32_t at = iterator->first(); at != icu::BreakIterator::DONE; at = iterator->next())
    breaks.push_back(static_cast<size_t>(at));
  return breaks;
}

using TIterator = std::unique_ptr<icu::BreakIterator>;

/** Cuts a text, one chunk between blanks after the other. */
class TUnitCutter {
public:
  explicit TUnitCutter(std::string_view text) : fText(text), fChars(chars_of(text)) { settle_small_tsu(&fChars); }

  std::vector<size_t> Starts() {
    size_t at = 0;
    while (at < fChars.size()) {
      const size_t end = ChunkEnd(at);
      if (end > at) CutChunk(at, end);
      at = end + 1;
    }
    if (fStarts.empty() && fHasText) fStarts.push_back(0); // punctuation only
    ApplyMarks();
    return fStarts;
  }

private:
  size_t ChunkEnd(size_t at) const {
    while (at < fChars.size() && fChars[at].sign != TSign::kBlank) ++at;
    return at;
  }
  size_t ByteAt(size_t index) const { return index < fChars.size() ? fChars[index].at : fText.size(); }

  void CutChunk(size_t begin, size_t end) {
    fHasText = true;
    fIcuBreaks = ChunkBreaks(begin, end);
    size_t opening = SIZE_MAX; // the first of the opening marks in front of the next core
    const TChar* lastCore = nullptr;
    for (size_t i = begin; i < end; ++i) {
      const TChar& each = fChars[i];
      if (each.sign == TSign::kOpening) {
        opening = std::min(opening, i);
      } else if (each.IsCore()) {
        if (!lastCore)
          StartChunk(each.IsInWord() ? begin : std::min(opening, i));
        else if (IsCut(*lastCore, each, fChars[i - 1]))
          Start(std::min(opening, i));
        lastCore = &each;
        opening = SIZE_MAX;
      } else if (lastCore) {
        opening = SIZE_MAX;
      }
    }
    if (!lastCore && opening == begin && fPendingOpening == SIZE_MAX) fPendingOpening = begin; // an opening mark alone
  }

  void StartChunk(size_t index) { Start(std::min(std::exchange(fPendingOpening, SIZE_MAX), index)); }
  void Start(size_t index) { fStarts.push_back(fStarts.empty() ? 0 : ByteAt(index)); }

  bool IsCut(const TChar& last, const TChar& next, const TChar& before) const {
    if (last.sign == TSign::kTsu) return false;
    if (!last.IsInWord() || !next.IsInWord()) return true;
    const bool isBreak = std::ranges::any_of(fIcuBreaks, [&](size_t at) { return at > last.at && at <= next.at; });
    if (last.sign == TSign::kComplex || next.sign == TSign::kComplex)
      return isBreak || (last.sign != next.sign && u_isalpha(last.code) && u_isalpha(next.code));
    // A particle may follow a number, a foreign word or a closing mark.
    return isBreak && last.sign == TSign::kHangul && next.sign == TSign::kHangul && !is_closing(before.code);
  }
  static bool is_closing(UChar32 code) { return (U_GET_GC_MASK(code) & (U_GC_PE_MASK | U_GC_PF_MASK)) != 0; }

  std::vector<size_t> ChunkBreaks(size_t begin, size_t end) {
    const auto first = fChars.begin() + static_cast<ptrdiff_t>(begin);
    const auto last = fChars.begin() + static_cast<ptrdiff_t>(end);
    if (std::none_of(first, last, std::mem_fn(&TChar::IsCutByIcu))) return {};
    const size_t start = ByteAt(begin);
    UErrorCode error = U_ZERO_ERROR;
    if (!fWords) fWords.reset(icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), error));
    std::vector<size_t> breaks = breaks_in(fText.substr(start, ByteAt(end) - start), fWords.get());
    for (size_t& each : breaks) each += start;
    return breaks;
  }

  /** The user's own cuts. */
  void ApplyMarks() {
    if (fStarts.empty()) return;
    for (size_t at = fText.find(kSplitMark); at != std::string_view::npos; at = fText.find(kSplitMark, at + 1))
      fStarts.push_back(at + kSplitMark.size());
    std::ranges::sort(fStarts);
    fStarts.erase(std::unique(fStarts.begin(), fStarts.end()), fStarts.end());
    std::erase_if(fStarts, [this](size_t at) {
      const bool isJoined = fText.substr(0, at).ends_with(kJoinMark);
      return at > 0 && (isJoined || at == fText.size());
    });
  }

  const std::string_view fText;
  std::vector<TChar> fChars;
  std::vector<size_t> fStarts;
  std::vector<size_t> fIcuBreaks; // of the current chunk
  TIterator fWords;               // made when it is needed
  size_t fPendingOpening = SIZE_MAX;
  bool fHasText = false;
};

} // namespace

std::vector<size_t> unit_starts(std::string_view text) {
  return text.size() > INT32_MAX ? std::vector<size_t>() : TUnitCutter(text).Starts();
}

std::vector<size_t> caret_stops(std::string_view text) {
  UErrorCode error = U_ZERO_ERROR;
  const TIterator iterator(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), error));
  std::vector<size_t> stops = breaks_in(text, U_SUCCESS(error) ? iterator.get() : nullptr);
  // The caret is behind a mark without width, not in front of it.
  std::erase_if(stops, [text](size_t at) {
    const std::string_view rest = text.substr(at);
    return rest.starts_with(kJoinMark) || rest.starts_with(kSplitMark);
  });
  return stops;
}

bool is_blank_text(std::string_view text) {
  return std::ranges::all_of(chars_of(text), [](const TChar& each) { return each.sign == TSign::kBlank; });
}

std::string without_unit_marks(std::string_view text) {
  std::string plain(text);
  for (const std::string_view mark : {kJoinMark, kSplitMark})
    for (size_t at = plain.find(mark); at != std::string::npos; at = plain.find(mark, at)) plain.erase(at, mark.size());
  return plain;
}
