#pragma once
// XML documentation files, cut into their members. A file is parsed one member at a time, so that
// the largest takes no more memory than its text; nothing outside of it is ever read.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pugi {
class xml_document;
}

namespace vendrel {

struct SourceText;

/// How deep the elements of one member may lie in each other. What compilers write has less than
/// 20 levels.
inline constexpr int kDeepestDocumentation = 64;

/// One documentation file: a root element, in it `members`, in these the `member` elements.
class DocumentationFile {
 public:
  /// One `member` element.
  struct Member {
    /// Where its text begins in the file as UTF-8, and how long it is.
    std::size_t Begin = 0;
    std::size_t Size = 0;
    /// 1-based line of its start.
    std::int32_t Line = 0;
    /// Nests deeper than `kDeepestDocumentation`; it is never parsed into a tree.
    bool IsTooDeep = false;
    /// As written in its start tag, references not resolved; trimmed.
    std::string_view Name;
  };

  /// Reads a file of this machine. Raises 53 or 75, and 5 with the place where it is not
  /// well-formed.
  static std::shared_ptr<const DocumentationFile> Read(const std::string& nativePath);
  /// The same from the bytes of a file; `name` is told in failures.
  static std::shared_ptr<const DocumentationFile> Parse(std::string bytes, std::string_view name);

  /// The names of all members in the bytes of a file, references resolved, without parsing it: of a
  /// file that is not well-formed too.
  static std::vector<std::string> NamesIn(std::string bytes);

  const std::vector<Member>& Members() const { return mMembers; }
  /// The text of a member's element.
  std::string_view TextOf(const Member& member) const {
    return mText.substr(member.Begin, member.Size);
  }
  /// Parses the element of a member; false for one that is too deep.
  bool Open(const Member& member, pugi::xml_document& document) const;
  /// The first member of a name such as "M:Shop.Goods.Find"; null if none. Answered from an index
  /// made at the first call.
  const Member* Find(std::string_view name) const;
  /// The members whose names are the same in front of their parameters ("M:Shop.Goods`1.Find"), in
  /// the order of the file. Answered from an index made at the first call.
  std::vector<const Member*> Named(std::string_view front) const;

 private:
  DocumentationFile() = default;

  std::shared_ptr<const SourceText> mSource;
  std::string_view mText;
  std::vector<Member> mMembers;
  mutable std::unordered_map<std::string_view, std::size_t> mByName;
  // Members by their names in front of the parameters; made when it is first asked for.
  mutable std::vector<std::pair<std::string_view, std::size_t>> mByFront;
};

/// Parses XML text as documentation files need it: blanks, comments and processing instructions are
/// kept. False where it is not well-formed.
bool ParseMarkUp(pugi::xml_document& document, std::string_view text);

}  // namespace vendrel
