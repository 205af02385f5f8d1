#include "sketch/render/text/emojiLength.h"

#include <QChar>
#include <algorithm>
#include <iterator>

namespace kelvar::render {
namespace {

constexpr char32_t kTextSelector = 0xFE0E, kEmojiSelector = 0xFE0F, kJoiner = 0x200D;
constexpr char32_t kKeycap = 0x20E3;

struct Range {
  char32_t first, last;
  bool has(char32_t code) const { return first <= code && code <= last; }
};
constexpr Range kFlagLetters{0x1F1E6, 0x1F1FF}, kSkinTones{0x1F3FB, 0x1F3FF};
constexpr Range kTags{0xE0020, 0xE007F};
/// Those that are shown as emoji unless a selector says otherwise.
constexpr Range kEmoji[] = {
    {0x231A, 0x231B},   {0x23E9, 0x23EC},   {0x23F0, 0x23F0},   {0x23F3, 0x23F3},
    {0x25FD, 0x25FE},   {0x2614, 0x2615},   {0x2648, 0x2653},   {0x267F, 0x267F},
    {0x2693, 0x2693},   {0x26A1, 0x26A1},   {0x26AA, 0x26AB},   {0x26BD, 0x26BE},
    {0x26C4, 0x26C5},   {0x26CE, 0x26CE},   {0x26D4, 0x26D4},   {0x26EA, 0x26EA},
    {0x26F2, 0x26F3},   {0x26F5, 0x26F5},   {0x26FA, 0x26FA},   {0x26FD, 0x26FD},
    {0x2705, 0x2705},   {0x270A, 0x270B},   {0x2728, 0x2728},   {0x274C, 0x274C},
    {0x274E, 0x274E},   {0x2753, 0x2755},   {0x2757, 0x2757},   {0x2795, 0x2797},
    {0x27B0, 0x27B0},   {0x27BF, 0x27BF},   {0x2B1B, 0x2B1C},   {0x2B50, 0x2B50},
    {0x2B55, 0x2B55},   {0x1F004, 0x1F004}, {0x1F0CF, 0x1F0CF}, {0x1F170, 0x1F251},
    {0x1F300, 0x1F6FF}, {0x1F7E0, 0x1F7F0}, {0x1F900, 0x1FAFF}};

bool isEmoji(char32_t code) {
  return std::any_of(std::begin(kEmoji), std::end(kEmoji),
                     [&](const Range& range) { return range.has(code); });
}

/// 0 at the end of the text.
char32_t codeAt(QStringView text, qsizetype at) {
  if (at >= text.size()) return 0;
  const bool isPair =
      text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
  return isPair ? QChar::surrogateToUcs4(text[at], text[at + 1]) : text[at].unicode();
}

qsizetype sizeOf(char32_t code) { return code > 0xFFFF ? 2 : 1; }

}  // namespace

qsizetype emojiLength(QStringView text, qsizetype at) {
  const char32_t first = codeAt(text, at);
  qsizetype end = at + sizeOf(first);
  const char32_t selector = codeAt(text, end);
  if (selector == kTextSelector || !(isEmoji(first) || selector == kEmojiSelector)) return 0;
  if (kFlagLetters.has(first) && kFlagLetters.has(selector)) end += sizeOf(selector);
  while (const char32_t next = codeAt(text, end)) {
    const bool isPart =
        next == kEmojiSelector || next == kKeycap || kSkinTones.has(next) || kTags.has(next);
    if (!isPart && next != kJoiner) break;
    end += sizeOf(next);
    if (next == kJoiner && end < text.size()) end += sizeOf(codeAt(text, end));
  }
  return end - at;
}

}  // namespace kelvar::render
