#pragma once
// The first line of a procedure, property, operator, delegate or event of VB.NET.

#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

class NetCursor;

/// The line in its parts, as written but for what is said.
struct NetMemberHeader {
  explicit NetMemberHeader(std::string_view statement);

  std::vector<std::string_view> Modifiers;
  std::string_view Keyword;
  std::string Name;
  /// It is the keyword of a constructor, and no name in brackets.
  bool IsNew = false;
  std::string_view Parameters;
  std::string_view Type;
  std::string SuffixType;
  bool IsArray = false;
  bool HasInitialiser = false;
  std::string Implements;
  std::vector<std::string_view> Handles;

 private:
  void ReadName(NetCursor& cursor);
  void ReadBehindList(NetCursor& cursor);
};

}  // namespace vendrel
