#pragma once
// What differs from another release: elements are compared by what the source says of them.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "project/VBProject.h"

namespace vendrel::site {

class SiteMap;

/// What a release holds, reduced to numbers: the projects may go once they were added.
class ReleaseState {
 public:
  struct Entry {
    std::uint64_t Signature = 0;
    std::uint64_t Text = 0;
    std::string_view Kind;
  };
  void Add(VBProject& project);
  /// By qualified name, folded, and kind; overloads count together.
  const std::unordered_map<std::string, Entry>& Entries() const { return mEntries; }
  /// As it was written.
  const std::string& NameOf(const std::string& key) const { return mNames.at(key); }

 private:
  std::unordered_map<std::string, Entry> mEntries;
  std::unordered_map<std::string, std::string> mNames;
};

enum class ElementChange : std::uint8_t { None, New, Signature, Text };

/// The comparison of the release at hand with another one.
class SiteChanges {
 public:
  SiteChanges(const std::vector<VBProject*>& projects, const ReleaseState& before);

  ElementChange Of(const CodeElement& element) const;
  /// A mark in HTML, or nothing.
  std::string TagOf(const CodeElement& element) const;
  /// Names and kinds of what is gone, in order.
  const std::vector<std::pair<std::string, std::string_view>>& Gone() const { return mGone; }
  /// What is new or changed, in the order of the tree.
  const std::vector<std::pair<const CodeElement*, ElementChange>>& Changed() const {
    return mChanged;
  }

 private:
  std::unordered_map<const CodeElement*, ElementChange> mOf;
  std::vector<std::pair<const CodeElement*, ElementChange>> mChanged;
  std::vector<std::pair<std::string, std::string_view>> mGone;
};

}  // namespace vendrel::site
