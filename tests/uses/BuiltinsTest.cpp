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
  return member->QualifiedName() + " " + std::string(member->Type) + (member->IsArray ? "()" : "") +
         " " + std::to_string(member->MinimumArguments()) + ".." +
         std::to_string(member->MaximumArguments());
}

TEST(Builtins, AreFoundAsTheLibraryNamesThem) {
  const struct {
    std::string_view Name, Shown;
  } rows[] = {{"left$", "VBA~Strings~Left Variant 2..2"},
              {"msgbox", "VBA~Interaction~MsgBox VbMsgBoxResult 1..5"},
              {"[Array]", "VBA~_HiddenModule~Array Variant 0..-1"},
              {"vbOK", "VBA~VbMsgBoxResult~vbOK VbMsgBoxResult 0..0"},
              {"vbNormal", "VBA~VbFileAttribute~vbNormal VbFileAttribute 0..0"},
              {"VBRED", "VBRUN~ColorConstants~vbRed ColorConstants 0..0"},
              {"Err", "VBA~Information~Err ErrObject 0..0"},
              {"App", "VB~Global~App App 0..0"},
              {"Unload", "VB~Global~Unload  1..1"},
              {"LoadPicture", "VB~Global~LoadPicture IPictureDisp 0..5"},
              {"UBound", "VBA~Language~UBound Long 1..2"},
              {"Debug", "VBA~Language~Debug Debug 0..0"},
              {"vbCrLf", "VBA~Constants~vbCrLf String 0..0"},
              {"Text", "none"},
              {"Width", "VBA~_HiddenModule~Width  2..2"},
              {"", "none"},
              {"$", "none"}};
  for (const auto& row : rows)
    EXPECT_EQ(Shown(Builtins::Table().FindGlobal(row.Name)), row.Shown) << row.Name;
}

TEST(Builtins, AreFoundWithinTheirLibrary) {
  const Builtins& table = Builtins::Table();
  EXPECT_EQ(Shown(table.FindGlobal("vba", "Left")), "VBA~Strings~Left Variant 2..2");
  EXPECT_EQ(Shown(table.FindGlobal("stdole", "LoadPicture")),
            "stdole~StdFunctions~LoadPicture IPictureDisp 0..4");
  EXPECT_EQ(table.FindGlobal("VB", "Left"), nullptr);
  EXPECT_EQ(table.FindGlobal("ADODB", "Left"), nullptr);
  EXPECT_TRUE(table.IsLibrary("vbrun"));
  EXPECT_FALSE(table.IsLibrary("Strings"));
  EXPECT_EQ(table.FindType("Licenses")->QualifiedName(), "VBRUN~Licenses");
  EXPECT_EQ(table.FindType("vb.textbox")->QualifiedName(), "VB~TextBox");
  EXPECT_EQ(table.FindType("VBA", "TextBox"), nullptr);
}

TEST(Builtins, MembersAndEventsAreFoundByTheirType) {
  const Builtins& table = Builtins::Table();
  EXPECT_EQ(Shown(table.FindMember("VB.TextBox", "text")), "VB~TextBox~Text String 0..0");
  EXPECT_EQ(Shown(table.FindMember("ListBox", "List")), "VB~ListBox~List String 1..1");
  EXPECT_EQ(Shown(table.FindMember("IFontDisp", "Bold")), "stdole~Font~Bold Boolean 0..0");
  EXPECT_EQ(Shown(table.FindMember("OLE_COLOR", "Bold")), "none");
  EXPECT_EQ(Shown(table.FindMember("TextBox", "KeyPress")), "none");
  EXPECT_EQ(Shown(table.FindEvent("TextBox", "KeyPress")), "VB~TextBox~KeyPress  1..1");
  EXPECT_TRUE(table.FindEvent("TextBox", "KeyPress")->Parameters[0].ByReference);
  EXPECT_EQ(Shown(table.FindEvent("Form", "QueryUnload")), "VB~Form~QueryUnload  2..2");
  EXPECT_EQ(Shown(table.FindSiteMember("Tag")), "VB~VBControlExtender~Tag String 0..0");
  EXPECT_EQ(table.FindMember("TextBox", "Left")->Owner, table.FindType("TextBox"));
}

TEST(Builtins, TellWhatClassesDo) {
  const Builtins& table = Builtins::Table();
  EXPECT_EQ(Shown(table.FindType("TextBox")->DefaultMember), "VB~TextBox~Text String 0..0");
  EXPECT_EQ(Shown(table.FindType("Collection")->DefaultMember), "VBA~Collection~Item Variant 1..1");
  EXPECT_EQ(table.FindType("App")->DefaultMember, nullptr);
  EXPECT_TRUE(table.FindType("Collection")->Creatable);
  EXPECT_FALSE(table.FindType("TextBox")->Creatable);
  EXPECT_FALSE(table.FindMember("ListBox", "ListCount")->Writable);
  EXPECT_FALSE(table.FindMember("OLE", "Action")->Readable);
  EXPECT_EQ(table.FindGlobal("vbKeyF1")->Value, "112");
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
    if (type.Kind == BuiltinTypeKind::Alias)
      EXPECT_TRUE(known(type.Base)) << type.Name;
    else
      EXPECT_FALSE(type.Members.empty()) << type.QualifiedName();
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
