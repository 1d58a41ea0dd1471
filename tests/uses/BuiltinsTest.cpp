// The table of built-ins: names are found as a type library gives them, and the table agrees with
// itself.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "uses/Builtins.h"

namespace vendrel {
namespace {

std::string Shown(const BuiltinMember* member) {
  if (!member) return "none";
  return member->QualifiedName() + " " + std::string(member->Type) +
         (member->IsArray ? "()" : "") + " " + std::to_string(member->MinimumArguments()) + ".." +
         std::to_string(member->MaximumArguments());
}

TEST(Builtins, AreFoundAsTheLibraryNamesThem) {
  const Builtins& table = Builtins::Table();
  EXPECT_EQ(Shown(table.FindGlobal("left$")), "VBA~Strings~Left Variant 2..2");
  EXPECT_EQ(Shown(table.FindGlobal("VBA", "Left")), "VBA~Strings~Left Variant 2..2");
  EXPECT_EQ(Shown(table.FindGlobal("VB", "Left")), "none");
  EXPECT_EQ(Shown(table.FindGlobal("msgbox")), "VBA~Interaction~MsgBox VbMsgBoxResult 1..5");
  EXPECT_EQ(Shown(table.FindGlobal("[Array]")), "VBA~_HiddenModule~Array Variant 0..-1");
  EXPECT_EQ(Shown(table.FindGlobal("vbOK")), "VBA~VbMsgBoxResult~vbOK VbMsgBoxResult 0..0");
  EXPECT_EQ(Shown(table.FindGlobal("Text")), "none");
  EXPECT_EQ(Shown(table.FindMember("VB.TextBox", "text")), "VB~TextBox~Text String 0..0");
  EXPECT_EQ(Shown(table.FindMember("TextBox", "KeyPress")), "none");
  EXPECT_EQ(Shown(table.FindEvent("TextBox", "KeyPress")), "VB~TextBox~KeyPress  1..1");
  EXPECT_TRUE(table.FindEvent("TextBox", "KeyPress")->Parameters[0].ByReference);
  EXPECT_EQ(Shown(table.FindType("TextBox")->DefaultMember), "VB~TextBox~Text String 0..0");
  EXPECT_EQ(Shown(table.FindSiteMember("Tag")), "VB~VBControlExtender~Tag String 0..0");
}

// A type that a member names is intrinsic or of the table; no type has two members of a name.
TEST(Builtins, AgreeWithThemselves) {
  const Builtins& table = Builtins::Table();
  for (const std::string& fault : table.Faults()) ADD_FAILURE() << fault;
  std::set<std::string> names;
  const auto known = [&](std::string_view type) {
    if (type.size() > 2 && type.substr(type.size() - 2) == "()") type.remove_suffix(2);
    return Builtins::IsIntrinsic(type) || table.FindType(type);
  };
  for (const BuiltinType& type : table.Types()) {
    EXPECT_TRUE(names.insert(type.QualifiedName()).second) << type.QualifiedName() << " twice";
    if (type.Kind == BuiltinTypeKind::Alias) EXPECT_TRUE(known(type.Base)) << type.Name;
    else EXPECT_FALSE(type.Members.empty()) << type.QualifiedName();
    std::set<std::string> members;
    for (const BuiltinMember& member : type.Members) {
      const std::string name = member.QualifiedName();
      EXPECT_TRUE(members.insert((member.Kind == BuiltinKind::Event ? "!" : "") + name).second)
          << name << " twice";
      EXPECT_EQ(member.Owner, &type) << name;
      EXPECT_TRUE(member.Type.empty() || known(member.Type)) << name << " As " << member.Type;
      for (const BuiltinParameter& each : member.Parameters)
        EXPECT_TRUE(known(each.Type)) << name << ": " << each.Name << " As " << each.Type;
    }
  }
}

}  // namespace
}  // namespace vendrel
