// Words behind "##" that were meant to be a tag: a letter wrong, the tag cut short or gone on with,
// or punctuation at its end.

#include <algorithm>
#include <exception>

#include "comments/TagDefinitions.h"
#include "comments/TaggedCommentRules.h"
#include "core/Ascii.h"
#include "diagnostics/Diagnostic.h"
#include "text/EditDistance.h"

namespace vendrel {
namespace {

constexpr std::size_t kHashes = 2;
constexpr std::size_t kLongest = 48;  // letters; no tag is that long
static_assert(kHashes + kLongest + 2 <= kLongestCompared);
constexpr std::size_t kShortestWord = 3;
// A short tag is a letter away from too many words, "##ED" from "##END".
constexpr std::size_t kShortestGuess = 4;

bool IsTagLetter(char c) { return IsLetterAscii(c) || IsDigitAscii(c) || c == '_'; }

// The word as its author meant it: up to a blank or tab, without punctuation.
std::string_view WordOf(std::string_view commentPart) {
  std::string_view word = commentPart.substr(0, commentPart.find_first_of(" \t"));
  while (!word.empty() && std::string_view(":.,;=-").find(word.back()) != std::string_view::npos)
    word.remove_suffix(1);
  return word;
}

bool LooksLikeTag(std::string_view word) {
  if (word.size() < kHashes + kShortestWord || word.size() > kHashes + kLongest) return false;
  word.remove_prefix(kHashes);
  return IsLetterAscii(word.front()) && std::all_of(word.begin(), word.end(), IsTagLetter);
}

// The closest tag: a letter or two away, else the longest that the word goes on from, else the
// shortest that goes on from the word. Empty if none is close.
std::string_view ClosestTag(std::string_view word, const TaggedCommentDefs& definitions) {
  std::size_t allowed = word.size() > kHashes + 5 ? 2 : 1;
  std::string_view close, longer, shorter;
  for (const TaggedCommentDef& definition : definitions) {
    const std::string_view tag = definition.TagIdentifier;
    if (tag.size() < kHashes + kShortestGuess || tag.size() > kHashes + kLongest) continue;
    if (tag.size() <= word.size() + allowed && word.size() <= tag.size() + allowed) {
      const std::size_t distance = EditDistance(word, tag);
      if (distance <= allowed && (close.empty() || distance < allowed)) {
        close = tag;
        allowed = distance;
      }
    }
    if (StartsWithNoCaseAscii(tag, word) && (longer.empty() || tag.size() < longer.size()))
      longer = tag;
    if (StartsWithNoCaseAscii(word, tag) && tag.size() > shorter.size()) shorter = tag;
  }
  if (!close.empty()) return close;
  return shorter.empty() ? longer : shorter;
}

}  // namespace

void ReportMistypedTag(std::string_view commentPart) {
  const std::string_view word = WordOf(commentPart);
  if (!LooksLikeTag(word)) return;
  try {
    const std::string_view tag = ClosestTag(word, TemplateObjects::Default().TaggedCommentDefs());
    if (tag.empty()) return;
    Report(DiagnosticCode::UnknownTag,
           {commentPart.substr(0, commentPart.find_first_of(" \t")), tag});
  } catch (const std::exception&) {
    // a failing service defines nothing
  }
}

}  // namespace vendrel
