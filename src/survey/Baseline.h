#pragma once
// Findings that are known. They are known by what stands on their lines, so that they stay so when
// lines move.

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>

#include "survey/Findings.h"

namespace vendrel {

/// What a finding is known by, 16 hexadecimal digits: its rule, its file as `shownFile` names it,
/// and the text of its line, blanks aside. Of a finding without a file its own text.
std::string FingerprintOf(const Finding& finding, std::string_view shownFile);

/// The findings that a file lists, and how often each.
class Baseline {
 public:
  /// Reads the text of such a file. Raises 321 with the reason for a text that is none.
  void Read(std::string_view text);
  void Add(const Finding& finding, std::string_view shownFile);
  /// Whether the finding is listed; each entry serves as often as it is counted there.
  bool Take(const Finding& finding, std::string_view shownFile);
  /// How many findings are listed.
  std::int64_t Count() const;
  /// Writes the file: JSON, an entry a line, in the order of files, rules and fingerprints, so that
  /// a comparison shows what came and went.
  void Write(std::ostream& out) const;

 private:
  /// File, id of the rule, fingerprint.
  using Key = std::tuple<std::string, std::string, std::string>;
  static Key KeyOf(const Finding& finding, std::string_view shownFile);
  std::map<Key, std::int64_t> mCounts;
};

}  // namespace vendrel
