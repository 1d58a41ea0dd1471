#include "typelib/reader/TypeLibListing.h"

#include <algorithm>

#include "typelib/reader/ListingWords.h"
#include "typelib/reader/MemberRules.h"

namespace vendrel::typelib {
namespace {

using Words = std::vector<std::string>;

// "[a, b]" or nothing.
std::string Bracketed(const Words& words) {
  if (words.empty()) return {};
  std::string text = "[";
  for (const std::string& word : words) {
    if (text.size() > 1) text += ", ";
    text += word;
  }
  return text + "]";
}

// The same in front of a declaration.
std::string Prefix(const Words& words) {
  return words.empty() ? std::string() : Bracketed(words) + " ";
}

std::string ValueText(const TypeLibValue& value) {
  switch (value.VarType) {
    case vtBstr:
    case vtLpStr:
    case vtLpWStr: return value.IsNull ? "null" : QuotedText(value.String);
    case vtDate: return QuotedText(value.Text());
    default: return value.IsNull ? "null" : value.Text();
  }
}

void AddHelp(Words& words, std::string_view text, std::uint32_t context,
             std::uint32_t stringContext) {
  if (!text.empty()) words.push_back("helpstring(" + QuotedText(text) + ")");
  if (context != 0) words.push_back("helpcontext(" + HexText(context) + ")");
  if (stringContext != 0) words.push_back("helpstringcontext(" + HexText(stringContext) + ")");
}

void AddCustomData(Words& words, const TypeLibInfo& library, std::int32_t list) {
  if (list < 0 || static_cast<std::size_t>(list) >= library.CustomDataLists.size()) return;
  for (const CustomDatum& datum : library.CustomDataLists[static_cast<std::size_t>(list)])
    words.push_back("custom(" + datum.Id.Text() + ", " +
                    (datum.Value == nullptr ? "?" : ValueText(*datum.Value)) + ")");
}

std::string VersionText(std::uint16_t major, std::uint16_t minor) {
  return "version(" + std::to_string(major) + "." + std::to_string(minor) + ")";
}

class Listing {
 public:
  explicit Listing(const TypeLibInfo& library) : mLibrary(library) {}

  std::string Write() {
    WriteHead();
    for (const TypeInfo& type : mLibrary.TypeInfos) WriteType(type);
    mText += "}\n";
    for (const std::string& message : mLibrary.Messages) mText += "// not read: " + message + "\n";
    return std::move(mText);
  }

 private:
  void WriteHead();
  void WriteType(const TypeInfo& type);
  void WriteImplemented(const TypeInfo& type);
  Words TypeWords(const TypeInfo& type) const;
  void WriteFunction(const MemberInfo& member);
  Words FunctionWords(const MemberInfo& member) const;
  std::string ParameterText(const ParameterInfo& parameter) const;
  void WriteVariable(const MemberInfo& member, bool isEnum);
  // Name of an array's dimensions goes behind the name of what is declared.
  static std::string Declaration(const VarTypeInfo& type, std::string_view name);

  const TypeLibInfo& mLibrary;
  std::string mText;
};

void Listing::WriteHead() {
  Words words = {"uuid(" + mLibrary.GUID() + ")",
                 VersionText(mLibrary.MajorVersion, mLibrary.MinorVersion),
                 "lcid(" + HexText(mLibrary.Lcid) + ")"};
  AddHelp(words, mLibrary.HelpString, mLibrary.HelpContext, mLibrary.HelpStringContext);
  if (!mLibrary.HelpFile.empty())
    words.push_back("helpfile(" + QuotedText(mLibrary.HelpFile) + ")");
  if (!mLibrary.HelpStringDll.empty())
    words.push_back("helpstringdll(" + QuotedText(mLibrary.HelpStringDll) + ")");
  for (std::string& word :
       FlagTexts(static_cast<std::uint32_t>(mLibrary.AttributeMask), LibraryFlagWords()))
    words.push_back(std::move(word));
  AddCustomData(words, mLibrary, mLibrary.CustomData);
  mText += "// " + std::string(mLibrary.Format == LibraryFormat::Sltg ? "SLTG" : "MSFT") + ", " +
           std::to_string(mLibrary.TypeInfos.size()) + " types, system " +
           std::to_string(mLibrary.SysKind) + "\n";
  mText += Bracketed(words) + "\nlibrary " + std::string(mLibrary.Name) + "\n{\n";
  for (const LibraryImport& import : mLibrary.Imports)
    mText += "    importlib(" + QuotedText(import.LeafName) + ");  // " + import.LibraryId.Text() +
             " " + std::to_string(import.MajorVersion) + "." + std::to_string(import.MinorVersion) +
             "\n";
}

Words Listing::TypeWords(const TypeInfo& type) const {
  Words words;
  if (!type.Id.IsNull()) words.push_back("uuid(" + type.GUID() + ")");
  if (type.MajorVersion != 0 || type.MinorVersion != 0)
    words.push_back(VersionText(type.MajorVersion, type.MinorVersion));
  AddHelp(words, type.HelpString, type.HelpContext, type.HelpStringContext);
  if (!type.DllName.empty()) words.push_back("dllname(" + QuotedText(type.DllName) + ")");
  if (!type.HelpStringDll.empty())
    words.push_back("helpstringdll(" + QuotedText(type.HelpStringDll) + ")");
  for (std::string& word :
       FlagTexts(static_cast<std::uint32_t>(type.AttributeMask), TypeFlagWords()))
    words.push_back(std::move(word));
  AddCustomData(words, mLibrary, type.CustomData);
  return words;
}

void Listing::WriteType(const TypeInfo& type) {
  const std::string name(type.Name);
  const std::string attributes = Bracketed(TypeWords(type));
  mText += attributes.empty() ? "\n    " : "\n    " + attributes + "\n    ";
  switch (type.TypeKind) {
    case tkAlias: mText += "typedef " + Declaration(type.AliasType, type.Name) + ";\n"; return;
    case tkRecord: mText += "struct " + name; break;
    case tkInterface:
    case tkDispatch: {
      const bool isVirtual = type.TypeKind == tkInterface || (type.AttributeMask & 0x40) != 0;
      mText += (isVirtual ? "interface " : "dispinterface ") + name;
      if (!type.Base.IsNone())
        mText += (isVirtual ? " : " : " shows ") + ReferenceText(mLibrary, type.Base);
      break;
    }
    default: mText += std::string(type.TypeKindString()) + " " + name; break;
  }
  mText += " {\n";
  if (type.TypeKind == tkCoclass) WriteImplemented(type);
  for (const MemberInfo& member : type.OwnMembers) {
    if (member.DescKind == dkFunction) {
      WriteFunction(member);
    } else {
      WriteVariable(member, type.TypeKind == tkEnum);
    }
  }
  mText += "    };\n";
}

void Listing::WriteImplemented(const TypeInfo& type) {
  for (const InterfaceInfo& item : type.Interfaces) {
    Words words = FlagTexts(static_cast<std::uint32_t>(item.AttributeMask), ImplementedFlagWords());
    AddCustomData(words, mLibrary, item.CustomData);
    mText += "        " + Prefix(words) + "interface " +
             ReferenceText(*item.Library, item.Reference) + ";\n";
  }
}

Words Listing::FunctionWords(const MemberInfo& member) const {
  Words words = {"id(" + HexText(static_cast<std::uint32_t>(member.MemberId)) + ")"};
  if (member.InvokeKind == ikGet) words.emplace_back("propget");
  if (member.InvokeKind == ikLet) words.emplace_back("propput");
  if (member.InvokeKind == ikSet) words.emplace_back("propputref");
  if (member.OptionalCount == -1) words.emplace_back("vararg");
  for (std::string& word : FlagTexts(member.AttributeMask, FunctionFlagWords()))
    words.push_back(std::move(word));
  if (!member.DllEntry.empty()) words.push_back("entry(" + QuotedText(member.DllEntry) + ")");
  if (member.DllOrdinal >= 0) words.push_back("entry(" + std::to_string(member.DllOrdinal) + ")");
  AddHelp(words, member.HelpString, member.HelpContext, member.HelpStringContext);
  if (!member.HelpFile.empty()) words.push_back("helpfile(" + QuotedText(member.HelpFile) + ")");
  if (!member.HelpStringDll.empty())
    words.push_back("helpstringdll(" + QuotedText(member.HelpStringDll) + ")");
  AddCustomData(words, mLibrary, member.CustomData);
  return words;
}

void Listing::WriteFunction(const MemberInfo& member) {
  mText += "        " + Prefix(FunctionWords(member)) + TypeText(member.StoredReturnType);
  if (member.CallConv != 4)
    mText += member.CallConv == 1   ? " __cdecl"
             : member.CallConv == 2 ? " __pascal"
                                    : " __call" + std::to_string(member.CallConv);
  mText += " " + std::string(member.Name) + "(";
  std::vector<const ParameterInfo*> stored;
  for (const ParameterInfo& parameter : member.StoredParameters()) stored.push_back(&parameter);
  std::sort(stored.begin(), stored.end(), [](const ParameterInfo* a, const ParameterInfo* b) {
    return a->Position < b->Position;
  });
  for (const ParameterInfo* parameter : stored) {
    if (parameter != stored.front()) mText += ", ";
    mText += ParameterText(*parameter);
  }
  mText += ");\n";
}

std::string Listing::ParameterText(const ParameterInfo& parameter) const {
  Words words =
      FlagTexts(parameter.Flags & ~(paramDefault | paramCustomData), ParameterFlagWords());
  if (parameter.Optional && (parameter.Flags & paramOptional) == 0 && !parameter.IsParamArray)
    words.emplace_back("optional");
  if (parameter.DefaultValue != nullptr)
    words.push_back("defaultvalue(" + ValueText(*parameter.DefaultValue) + ")");
  AddCustomData(words, mLibrary, parameter.CustomData);
  return Prefix(words) + Declaration(parameter.VarTypeInfo, parameter.Name);
}

void Listing::WriteVariable(const MemberInfo& member, bool isEnum) {
  Words words;
  if (member.StoredKind == vkDispatch)
    words.push_back("id(" + HexText(static_cast<std::uint32_t>(member.MemberId)) + ")");
  for (std::string& word : FlagTexts(member.AttributeMask, VariableFlagWords()))
    words.push_back(std::move(word));
  AddHelp(words, member.HelpString, member.HelpContext, member.HelpStringContext);
  AddCustomData(words, mLibrary, member.CustomData);
  mText += "        " + Prefix(words);
  if (!isEnum) {
    if (member.StoredKind == vkConstant) mText += "const ";
    if (member.StoredKind == vkStatic) mText += "static ";
    mText += Declaration(member.StoredReturnType, member.Name);
  } else {
    mText += member.Name;
  }
  if (member.StoredKind == vkConstant)
    mText += " = " + (member.Value == nullptr ? "?" : ValueText(*member.Value));
  mText += isEnum ? ",\n" : ";\n";
}

std::string Listing::Declaration(const VarTypeInfo& type, std::string_view name) {
  std::string text = TypeText(type);
  if (name.empty()) return text;
  std::string bounds;
  const std::size_t mark = text.find('[');
  if (mark != std::string::npos && text.back() == ']') {
    bounds = text.substr(mark);
    text.resize(mark);
  }
  return text + " " + std::string(name) + bounds;
}

}  // namespace

std::string TypeLibListing(const TypeLibInfo& library) { return Listing(library).Write(); }

}  // namespace vendrel::typelib
