#include "dotnet/DocumentationFile.h"

#include <algorithm>
#include <cstring>
#include <pugixml.hpp>

#include "comments/CommentFile.h"
#include "core/Ascii.h"
#include "diagnostics/Context.h"
#include "dotnet/MarkUp.h"
#include "services/FileSource.h"
#include "services/SourceText.h"

namespace vendrel {
namespace {

constexpr int kMemberDepth = 2;  // below the root and `members`

// One piece of mark-up.
struct Tag {
  enum class Kind { Start, Empty, End, Other } What = Kind::Other;
  std::size_t Begin = 0, End = 0;  // from "<" to behind ">"
  std::string_view Name;
};

// Cuts a text at its tags without looking at what they hold: whether a piece is well-formed is for
// the parser to say.
class TagScanner {
 public:
  explicit TagScanner(std::string_view text) : mText(text) {}

  bool Next(Tag& tag) {
    const void* found =
        mAt < mText.size() ? std::memchr(mText.data() + mAt, '<', mText.size() - mAt) : nullptr;
    if (!found) return false;
    tag = {};
    tag.Begin = static_cast<std::size_t>(static_cast<const char*>(found) - mText.data());
    tag.End = mAt = EndOf(tag);
    return true;
  }

 private:
  std::size_t Behind(std::string_view end, std::size_t from) const {
    const std::size_t at = mText.find(end, from);
    return at == std::string_view::npos ? mText.size() : at + end.size();
  }

  std::size_t EndOf(Tag& tag) const {
    const std::string_view rest = mText.substr(tag.Begin, 9);
    if (rest.starts_with("<!--")) return Behind("-->", tag.Begin + 4);
    if (rest.starts_with("<![CDATA[")) return Behind("]]>", tag.Begin + 9);
    if (rest.starts_with("<?")) return Behind("?>", tag.Begin + 2);
    if (rest.starts_with("<!")) return EndOfDeclaration(tag.Begin);
    const std::size_t end = EndOfTag(tag.Begin);
    const bool isEnd = rest.starts_with("</");
    tag.What = isEnd                                           ? Tag::Kind::End
               : end >= tag.Begin + 3 && mText[end - 2] == '/' ? Tag::Kind::Empty
                                                               : Tag::Kind::Start;
    const std::size_t name = tag.Begin + (isEnd ? 2 : 1);
    tag.Name = mText.substr(name, mText.find_first_of(" \t\r\n/>", name) - name);
    return end;
  }

  // Values may hold ">".
  std::size_t EndOfTag(std::size_t at) const {
    while ((at = mText.find_first_of("\"'>", at)) != std::string_view::npos) {
      if (mText[at] == '>') return at + 1;
      const std::size_t close = mText.find(mText[at], at + 1);
      if (close == std::string_view::npos) break;
      at = close + 1;
    }
    return mText.size();
  }

  // A document type may hold declarations in brackets.
  std::size_t EndOfDeclaration(std::size_t at) const {
    std::size_t depth = 0;
    for (; at < mText.size(); ++at) {
      const char c = mText[at];
      if (c == '"' || c == '\'') {
        at = mText.find(c, at + 1);
        if (at == std::string_view::npos) break;
      } else if (c == '<') {
        ++depth;
      } else if (c == '>' && --depth == 0) {
        return at + 1;
      }
    }
    return mText.size();
  }

  std::string_view mText;
  std::size_t mAt = 0;
};

// The attribute "name" of a start tag that is known to be well-formed.
std::string_view NameIn(std::string_view tag) {
  for (std::size_t at = tag.find("name"); at != std::string_view::npos;
       at = tag.find("name", at + 1)) {
    const bool isWord = std::string_view(" \t\r\n").find(tag[at - 1]) != std::string_view::npos;
    std::size_t behind = tag.find_first_not_of(" \t\r\n", at + 4);
    if (!isWord || behind == std::string_view::npos || tag[behind] != '=') continue;
    behind = tag.find_first_of("\"'", behind);
    if (behind == std::string_view::npos) return {};
    return TrimWhite(tag.substr(behind + 1, tag.find(tag[behind], behind + 1) - behind - 1));
  }
  return {};
}

// Gathers the members, and what is left of the text without them.
class Cutting {
 public:
  Cutting(std::string_view text, std::vector<DocumentationFile::Member>& members)
      : mText(text), mMembers(members) {}

  /// What stands outside of members.
  std::string Run() {
    TagScanner scanner(mText);
    for (Tag tag; scanner.Next(tag);) Take(tag);
    return mOutside.append(mText.substr(mCopied));
  }

 private:
  void Take(const Tag& tag) {
    switch (tag.What) {
      case Tag::Kind::Other: return;
      case Tag::Kind::Empty:
        if (IsMember(tag)) {
          Begin(tag);
          End(tag);
        } else {
          mDeepest = std::max(mDeepest, mDepth + 1);
        }
        return;
      case Tag::Kind::Start:
        if (IsMember(tag)) Begin(tag);
        if (mDepth == 1) mIsInMembers = tag.Name == "members";
        mDeepest = std::max(mDeepest, ++mDepth);
        return;
      case Tag::Kind::End:
        --mDepth;
        if (mDepth == kMemberDepth && mIsOpen) End(tag);
        return;
    }
  }

  bool IsMember(const Tag& tag) const {
    return mDepth == kMemberDepth && mIsInMembers && !mIsOpen && tag.Name == "member";
  }

  void Begin(const Tag& tag) {
    const std::string_view between = mText.substr(mCopied, tag.Begin - mCopied);
    mOutside.append(between);
    const std::string_view sinceLast = mText.substr(mCounted, tag.Begin - mCounted);
    mLine += static_cast<std::int32_t>(std::count(sinceLast.begin(), sinceLast.end(), '\n'));
    mCounted = tag.Begin;
    mOpen = {};
    mOpen.Begin = tag.Begin;
    mOpen.Line = mLine;
    mOpen.Name = NameIn(mText.substr(tag.Begin, tag.End - tag.Begin));
    mIsOpen = true;
    mDeepest = mDepth;
  }

  void End(const Tag& tag) {
    mOpen.Size = tag.End - mOpen.Begin;
    mOpen.IsTooDeep = mDeepest - kMemberDepth > kDeepestDocumentation;
    mMembers.push_back(mOpen);
    mCopied = tag.End;
    mIsOpen = false;
  }

  std::string_view mText;
  std::vector<DocumentationFile::Member>& mMembers;
  std::string mOutside;
  DocumentationFile::Member mOpen;
  std::size_t mCopied = 0, mCounted = 0;
  std::int32_t mLine = 1;
  int mDepth = 0, mDeepest = 0;
  bool mIsInMembers = false, mIsOpen = false;
};

// NULs in front, as damaged disks leave them, are passed over.
std::shared_ptr<const SourceText> Decoded(std::string bytes) {
  const std::size_t start = std::min(bytes.find_first_not_of('\0'), bytes.size());
  bytes.erase(0, start);
  return SourceText::Decode(std::move(bytes), FileOptions::Current().Page());
}

[[noreturn]] void Refuse(std::string_view name, std::int32_t line, std::string_view reason) {
  throw VendrelError(errInvalidArgument, std::string(name) + ": line " + std::to_string(line) +
                                             ": " + std::string(reason));
}

}  // namespace

bool ParseMarkUp(pugi::xml_document& document, std::string_view text) {
  return document.load_buffer(text.data(), text.size(), kMarkUpParse, pugi::encoding_utf8) &&
         FindForeignReference(text) == std::string_view::npos;
}

std::shared_ptr<const DocumentationFile> DocumentationFile::Read(const std::string& nativePath) {
  return Parse(ReadWholeFile(nativePath), nativePath);
}

// The members, each by itself, and the rest without them are well-formed if and only if the whole
// is.
std::shared_ptr<const DocumentationFile> DocumentationFile::Parse(std::string bytes,
                                                                  std::string_view name) try {
  std::shared_ptr<DocumentationFile> file(new DocumentationFile);
  file->mSource = Decoded(std::move(bytes));
  file->mText = file->mSource->Text;
  const std::string outside = Cutting(file->mText, file->mMembers).Run();
  pugi::xml_document document;
  ParseXml(document, outside, name);
  for (const Member& member : file->mMembers)
    if (!ParseMarkUp(document, file->TextOf(member)))
      Refuse(name, member.Line, "the member " + std::string(member.Name) + " is not well-formed");
  return file;
}
VENDREL_CONTEXT(name)

std::vector<std::string> DocumentationFile::NamesIn(std::string bytes) {
  const std::shared_ptr<const SourceText> source = Decoded(std::move(bytes));
  std::vector<Member> members;
  Cutting(source->Text, members).Run();
  std::vector<std::string> names;
  names.reserve(members.size());
  pugi::xml_document tag;
  for (const Member& member : members) {
    std::string name(member.Name);
    if (name.find('&') != std::string::npos &&
        tag.load_string(("<a n=\"" + ReplaceAll(name, "\"", "&quot;") + "\"/>").c_str()))
      name = tag.document_element().attribute("n").value();
    names.push_back(std::move(name));
  }
  return names;
}

bool DocumentationFile::Open(const Member& member, pugi::xml_document& document) const {
  const std::string_view text = TextOf(member);
  return !member.IsTooDeep &&
         document.load_buffer(text.data(), text.size(), kMarkUpParse, pugi::encoding_utf8);
}

std::vector<const DocumentationFile::Member*> DocumentationFile::Named(
    std::string_view front) const {
  if (mByFront.empty()) {
    mByFront.reserve(mMembers.size());
    for (std::size_t i = 0; i < mMembers.size(); ++i)
      mByFront.emplace_back(mMembers[i].Name.substr(0, mMembers[i].Name.find('(')), i);
    std::sort(mByFront.begin(), mByFront.end());
  }
  std::vector<const Member*> found;
  for (auto at =
           std::lower_bound(mByFront.begin(), mByFront.end(), std::pair(front, std::size_t{}));
       at != mByFront.end() && at->first == front; ++at)
    found.push_back(&mMembers[at->second]);
  return found;
}

const DocumentationFile::Member* DocumentationFile::Find(std::string_view name) const {
  if (mByName.empty()) {
    mByName.reserve(mMembers.size());
    for (std::size_t i = 0; i < mMembers.size(); ++i) mByName.try_emplace(mMembers[i].Name, i);
  }
  const auto found = mByName.find(name);
  return found == mByName.end() ? nullptr : &mMembers[found->second];
}

}  // namespace vendrel
