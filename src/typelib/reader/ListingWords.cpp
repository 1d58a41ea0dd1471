#include "typelib/reader/ListingWords.h"

#include <cstdio>

namespace vendrel::typelib {
namespace {

constexpr FlagWord kLibraryFlags[] = {
    {1, "restricted"}, {2, "control"}, {4, "hidden"}, {8, "hasdiskimage"}};
constexpr FlagWord kTypeFlags[] = {
    {1, "appobject"},         {2, "cancreate"},        {4, "licensed"},
    {8, "predeclid"},         {0x10, "hidden"},        {0x20, "control"},
    {0x40, "dual"},           {0x80, "nonextensible"}, {0x100, "oleautomation"},
    {0x200, "restricted"},    {0x400, "aggregatable"}, {0x800, "replaceable"},
    {0x1000, "dispatchable"}, {0x2000, "reversebind"}, {0x4000, "proxy"}};
constexpr FlagWord kFunctionFlags[] = {{1, "restricted"},
                                       {2, "source"},
                                       {4, "bindable"},
                                       {8, "requestedit"},
                                       {0x10, "displaybind"},
                                       {0x20, "defaultbind"},
                                       {0x40, "hidden"},
                                       {0x80, "usesgetlasterror"},
                                       {0x100, "defaultcollelem"},
                                       {0x200, "uidefault"},
                                       {0x400, "nonbrowsable"},
                                       {0x800, "replaceable"},
                                       {0x1000, "immediatebind"}};
constexpr FlagWord kVariableFlags[] = {
    {1, "readonly"},          {2, "source"},           {4, "bindable"},
    {8, "requestedit"},       {0x10, "displaybind"},   {0x20, "defaultbind"},
    {0x40, "hidden"},         {0x80, "restricted"},    {0x100, "defaultcollelem"},
    {0x200, "uidefault"},     {0x400, "nonbrowsable"}, {0x800, "replaceable"},
    {0x1000, "immediatebind"}};
constexpr FlagWord kImplementedFlags[] = {
    {1, "default"}, {2, "source"}, {4, "restricted"}, {8, "defaultvtable"}};
constexpr FlagWord kParameterFlags[] = {
    {1, "in"}, {2, "out"}, {4, "lcid"}, {8, "retval"}, {0x10, "optional"}};

}  // namespace

std::span<const FlagWord> LibraryFlagWords() { return kLibraryFlags; }
std::span<const FlagWord> TypeFlagWords() { return kTypeFlags; }
std::span<const FlagWord> FunctionFlagWords() { return kFunctionFlags; }
std::span<const FlagWord> VariableFlagWords() { return kVariableFlags; }
std::span<const FlagWord> ImplementedFlagWords() { return kImplementedFlags; }
std::span<const FlagWord> ParameterFlagWords() { return kParameterFlags; }

std::vector<std::string> FlagTexts(std::uint32_t bits, std::span<const FlagWord> words) {
  std::vector<std::string> texts;
  for (const FlagWord& word : words) {
    if ((bits & word.Bit) != 0) texts.emplace_back(word.Word);
    bits &= ~word.Bit;
  }
  if (bits != 0) texts.push_back("flags(" + HexText(bits) + ")");
  return texts;
}

std::string HexText(std::uint32_t number) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%x", number);
  return text;
}

std::string QuotedText(std::string_view text) {
  std::string result = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') {
      result += '\\';
      result += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      char code[8];
      std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned>(c));
      result += code;
    } else {
      result += c;
    }
  }
  return result + '"';
}

}  // namespace vendrel::typelib
