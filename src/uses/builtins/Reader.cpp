#include "uses/builtins/Reader.h"

#include <algorithm>
#include <array>

#include "core/Ascii.h"

namespace vendrel {
namespace {

struct MemberWord {
  std::string_view Word;
  BuiltinKind Kind;
  bool Readable, Writable;
};
constexpr MemberWord kMemberWords[] = {
    {"fun", BuiltinKind::Function, true, false},  {"sub", BuiltinKind::Sub, true, false},
    {"get", BuiltinKind::Property, true, false},  {"let", BuiltinKind::Property, true, true},
    {"put", BuiltinKind::Property, false, true},  {"event", BuiltinKind::Event, true, false},
    {"const", BuiltinKind::Constant, true, false}};

struct TypeWord {
  std::string_view Word;
  BuiltinTypeKind Kind;
  bool Global;
};
constexpr TypeWord kBuiltinTypeWords[] = {{"module", BuiltinTypeKind::Module, true},
                                          {"class", BuiltinTypeKind::Class, false},
                                          {"control", BuiltinTypeKind::Control, false},
                                          {"enum", BuiltinTypeKind::Enumeration, true},
                                          {"alias", BuiltinTypeKind::Alias, false}};

template <typename Rows>
auto RowOfWord(const Rows& rows, std::string_view word) -> decltype(&rows[0]) {
  for (const auto& row : rows)
    if (row.Word == word) return &row;
  return nullptr;
}

// Takes the word up to the next blank or line end off the text.
std::string_view TakeTableWord(std::string_view& text) {
  const std::size_t start = text.find_first_not_of(" \n");
  if (start == std::string_view::npos) return text = {};
  text.remove_prefix(start);
  const std::size_t end = std::min(text.find_first_of(" \n"), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(end);
  return word;
}

// Takes ":Type" or ":Type()" off the end of a word; whether it is an array goes into `array`.
std::string_view TakeTypeOff(std::string_view& word, bool& array) {
  const std::size_t colon = word.rfind(':');
  if (colon == std::string_view::npos || word.find(')', colon) == word.size() - 1) {
    array = colon != std::string_view::npos && word.substr(word.size() - 2) == "()";
    if (!array) return "Variant";
  }
  std::string_view type = word.substr(colon + 1);
  if (array) type.remove_suffix(2);
  word = word.substr(0, colon);
  return type;
}

}  // namespace

void BuiltinReader::Fault(std::string_view what, std::string_view word) {
  std::string text(mLibrary);
  if (!mTable.mTypes.empty()) text.append("~").append(mTable.mTypes.back().Name);
  mTable.mFaults.push_back(text.append(": ").append(what).append(": ").append(word));
}

void BuiltinReader::Read(std::string_view text) {
  mMode = {};
  for (std::string_view word = TakeTableWord(text); !word.empty(); word = TakeTableWord(text))
    if (!TakeKeyword(word)) TakeArgument(word);
}

bool BuiltinReader::TakeKeyword(std::string_view word) {
  if (word == "new" || word == "global") {
    if (!mOpenIsType)
      Fault("no class is open", word);
    else
      (word == "new" ? mTable.mTypes.back().Creatable : mTable.mTypes.back().IsGlobal) = true;
    return true;
  }
  const bool known = RowOfWord(kMemberWords, word) || RowOfWord(kBuiltinTypeWords, word) ||
                     word == "library" || word == "part" || word == "with" || word == "default";
  if (known) mMode = word;
  return known;
}

void BuiltinReader::TakeArgument(std::string_view word) {
  if (mMode == "library") {
    mLibrary = word;
    if (std::find(mTable.mLibraries.begin(), mTable.mLibraries.end(), word) ==
        mTable.mLibraries.end())
      mTable.mLibraries.push_back(word);
  } else if (mMode == "part") {
    mOpen = &mParts[word];
    mOpenIsType = false;
  } else if (RowOfWord(kBuiltinTypeWords, mMode) &&
             !(mMode == "enum" && word.find('=') != word.npos)) {
    OpenType(word);
  } else if (!mOpen) {
    Fault("no type is open", word);
  } else if (mMode == "with") {
    const auto part = mParts.find(word);
    if (part == mParts.end()) return Fault("unknown part", word);
    mOpen->Members.insert(mOpen->Members.end(), part->second.Members.begin(),
                          part->second.Members.end());
  } else if (mMode == "default") {
    mOpen->Default = word;
  } else {
    AddMember(word);
  }
}

void BuiltinReader::OpenType(std::string_view name) {
  const TypeWord& row = *RowOfWord(kBuiltinTypeWords, mMode);
  BuiltinType type;
  type.Library = mLibrary;
  type.Kind = row.Kind;
  type.IsGlobal = row.Global;
  if (row.Kind == BuiltinTypeKind::Alias) {
    type.Base = name.substr(name.find(':') + 1);
    name = name.substr(0, name.find(':'));
  }
  type.Name = name;
  mTable.mTypes.push_back(type);
  mRaw.emplace_back();
  mOpen = &mRaw.back();
  mOpenIsType = true;
}

void BuiltinReader::AddMember(std::string_view word) {
  const MemberWord* row = RowOfWord(kMemberWords, mMode == "enum" ? "const" : mMode);
  if (!row) return Fault("neither a member nor a word of the table", word);
  RawMember raw;
  raw.Member.Kind = row->Kind;
  raw.Member.Readable = row->Readable;
  raw.Member.Writable = row->Writable;
  if (row->Kind == BuiltinKind::Constant) {
    raw.Member.Type = mMode == "enum" ? mTable.mTypes.back().Name : "Long";
    const std::size_t equal = word.find('=');
    if (equal != word.npos) raw.Member.Value = word.substr(equal + 1);
    word = word.substr(0, equal);
  }
  if (row->Kind != BuiltinKind::Event && row->Kind != BuiltinKind::Sub &&
      (row->Kind != BuiltinKind::Constant || word.find(':') != word.npos))
    raw.Member.Type = TakeTypeOff(word, raw.Member.IsArray);
  raw.FirstParameter = mTable.mParameters.size();
  const std::size_t open = word.find('(');
  if (open != word.npos) {
    if (word.back() != ')') return Fault("no closing bracket", word);
    AddParameters(word.substr(open + 1, word.size() - open - 2));
  }
  raw.ParameterCount = mTable.mParameters.size() - raw.FirstParameter;
  raw.Member.Name = word.substr(0, open);
  mOpen->Members.push_back(raw);
}

void BuiltinReader::AddParameters(std::string_view list) {
  while (!list.empty()) {
    std::string_view text = TakeField(list, ',');
    BuiltinParameter parameter;
    if (text.front() == '[' && text.back() == ']') {
      parameter.Optional = true;
      text = text.substr(1, text.size() - 2);
    }
    if (text.front() == '&') parameter.ByReference = true;
    if (text.front() == '*') parameter.ParamArray = true;
    if (parameter.ByReference || parameter.ParamArray) text.remove_prefix(1);
    const std::size_t colon = text.find(':');
    if (colon != text.npos) parameter.Type = text.substr(colon + 1);
    parameter.Name = text.substr(0, colon);
    mTable.mParameters.push_back(parameter);
  }
}

void BuiltinReader::Finish() {
  std::size_t count = 0;
  for (const RawType& raw : mRaw) count += raw.Members.size();
  mTable.mMembers.reserve(count);  // members point at each other's neighbours: none may move
  for (std::size_t i = 0; i < mRaw.size(); ++i) {
    BuiltinType& type = mTable.mTypes[i];
    const std::size_t first = mTable.mMembers.size();
    for (const RawMember& raw : mRaw[i].Members) {
      BuiltinMember& member = mTable.mMembers.emplace_back(raw.Member);
      member.Owner = &type;
      member.Parameters = {mTable.mParameters.data() + raw.FirstParameter, raw.ParameterCount};
      if (member.Name == mRaw[i].Default && member.Kind != BuiltinKind::Event)
        type.DefaultMember = &member;
    }
    type.Members = {mTable.mMembers.data() + first, mTable.mMembers.size() - first};
    if (!mRaw[i].Default.empty() && !type.DefaultMember)
      mTable.mFaults.push_back(type.QualifiedName() +
                               ": no such default: " + std::string(mRaw[i].Default));
  }
}

}  // namespace vendrel
