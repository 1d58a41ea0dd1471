// Names of VB.NET source. Those of the framework are left out of what is compared: whether its
// assemblies are on this machine decides what they mean.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dotnet/NetProjects.h"
#include "uses/ShownUses.h"

namespace vendrel {
namespace {

constexpr const char* kTypes =
    "Namespace Inner\n"
    "  Public Enum Colour\n    Red = 1\n    Dark = Red * 2\n  End Enum\n"
    "  Public Structure Pt\n    Public X As Integer\n  End Structure\n"
    "  Public Interface IThing\n    Sub Go(n As Integer)\n  End Interface\n"
    "  Public Class Base\n"
    "    Protected mItems As New List(Of Base)\n"
    "    Public Event Hit(ByVal n As Integer)\n"
    "    Public Overridable Property Size As Integer\n"
    "    Public Class Nested\n      Public Deep As Integer\n    End Class\n"
    "    Public Shared Function Make(Of T)(a As T, Optional ByRef b As Integer = 1) As Base\n"
    "      Return New Base\n    End Function\n"
    "  End Class\n"
    "End Namespace\n"
    "Module Util\n"
    "  Public Const Limit = 3\n"
    "  Function Twice(n As Integer) As Integer\n  End Function\n"
    "  Function Twice(n As Integer, s As String) As String\n  End Function\n"
    "End Module\n";

// The class User with those members, beside the types above.
class Users : public test::NetProject {
 public:
  explicit Users(const std::string& members)
      : test::NetProject(
            {{"A.vb", kTypes},
             {"B.vb", "Public Class User\n  Inherits Inner.Base\n" + members + "End Class\n"}},
            test::Complete(), "Root") {
    Resolve();
  }
  // Of the class, behind its first two lines.
  std::string Uses() {
    std::string all;
    UseBinder binder(*Project);
    for (const Component& module : std::as_const(Project->Components).Listed()) {
      if (module.Name != "User") continue;
      binder.Bind(module, [&](const NameUse& use) {
        const bool isForeign =
            use.Answer == UseAnswer::External || use.Answer == UseAnswer::Library;
        if (use.Line < 3 || isForeign) return;
        if (!all.empty()) all += "; ";
        all += test::Shown(use, false);
        EXPECT_EQ(use.Module, &module);
      });
    }
    return all;
  }
};

struct NetRow {
  const char* Members;
  const char* Uses;
};

TEST(NetUses, FollowTheRulesOfVBNet) {
  const NetRow rows[] = {
      {"Sub S(n As Integer)\nDim p As New Inner.Pt With {.X = n}, q = New Inner.Base()\np.X += "
       "Limit\nq.Size = p.X\nEnd Sub\n",
       "Inner qualify project; Pt new project; X write field; n read parameter; Inner qualify "
       "project; Base new project; p part local; X write field; Limit read project; q read local; "
       "Size write set project; p read local; X read field"},
      {"Sub S(n As Integer)\nDim b = Inner.Base.Make(Of Integer)(1, n)\nb.Size = "
       "Util.Twice(n, \"\")\nEnd Sub\n",
       "Inner qualify project; Base qualify project; Make call project; n by-reference parameter; "
       "b "
       "read local; Size write set project; Util qualify project; Twice call project; n read "
       "parameter"},
      {"Sub S(n As Integer)\nDim c As Inner.Colour =\n  Inner.Colour.Red Or _\n  "
       "Inner.Colour.Dark\nEnd Sub\n",
       "Inner qualify project; Colour type project; Inner qualify project; Colour qualify project; "
       "Red "
       "read enumeration-member; Inner qualify project; Colour qualify project; Dark read "
       "enumeration-member"},
      {"Private mName As String\nProperty Total As Integer\nGet\nReturn Size\nEnd Get\nSet(value "
       "As "
       "Integer)\nmName = $\"{value:0} of {Size}\"\nEnd Set\nEnd Property\n",
       "Size read get project; mName write own-module; value read parameter; Size read get "
       "project"},
      {"Sub S(n As Integer)\nDim z = From i In mItems Where i IsNot Me AndAlso n > 1\n        "
       "Select "
       "i\nmItems.ForEach(Sub(x) n = x)\nAddHandler Me.Hit, Sub(k)\n  n = k\nEnd Sub\nn = "
       "If(n > 1, CType(z, Integer), 0)\nEnd Sub\n",
       "mItems read project; i read local; n read parameter; i read local; mItems read project; n "
       "write parameter; x read parameter; Hit read project; n write parameter; k read parameter; "
       "n write parameter; n read parameter; z read local"},
      {"Private WithEvents mBase As Inner.Base\nPrivate Sub H(n As Integer) Handles mBase.Hit, "
       "MyBase.Hit\nTry\nFor Each i As Integer In {n}\nn = i\nNext\nCatch e As Exception When n = "
       "1\nThrow e\nEnd Try\nEnd Sub\n",
       "Inner qualify project; Base type project; mBase handle own-module; Hit handle project; Hit "
       "handle project; n read parameter; n write parameter; i read local; n read parameter; e "
       "read local"},
      {"Function F(Of T)(a As T) As T\nDim d As New Nested With {.Deep = 1}\nReturn "
       "Later(a)\nEnd Function\nFunction Later(Of U)(a As U) As U\nEnd Function\n",
       "T type type; T type type; Nested new project; Deep write project; Later call own-module; a "
       "read parameter; U type type; U type type"},
      {"Custom Event Gone As EventHandler\nRaiseEvent(sender As Object, n As Inner.Pt)\nn.X = "
       "1\nEnd RaiseEvent\nEnd Event\nFunction G(<Ask(Limit)> a As Integer) As <Ask(Limit)> "
       "Inner.Pt\nEnd Function\n",
       "Inner qualify project; Pt type project; n part parameter; X write field; Limit read "
       "project; "
       "Limit read project; Inner qualify project; Pt type project"},
      {"Sub S(n As Integer)\nDim t = \"one\nEnd Sub ' two\n\" & n\nn = t\nEnd Sub\n",
       "n read parameter; n write parameter; t read local"},
      {"Sub S(n As Integer)\nDim p = <a n=<%= n %> t='>'>\n  End Sub <b/>\n  <%= From i In mItems "
       "Select <c><%= i.Size %></c> %>\n</a>\nn = p.<b>.Value\nIf n <Limit Then n = 1\nEnd Sub\n",
       "n read parameter; mItems read project; i read local; Size read late; n write "
       "parameter; p read local; n read parameter; Limit read project; n write parameter"},
      {"Public ReadOnly Property Once As Integer\nSub New(n As Integer)\nMyClass.New()\nOnce = "
       "n\nEnd Sub\nSub New()\nMe.New(1)\nEnd Sub\nOverrides Property Size As Integer\nSub "
       "S()\nSize = Once\nEnd Sub\n",
       "New call own-module; Once write set own-module; n read parameter; New call own-module; "
       "Size "
       "write set own-module; Once read get own-module"},
  };
  for (const NetRow& row : rows) EXPECT_EQ(Users(row.Members).Uses(), row.Uses) << row.Members;
}

// A name means what the imports of its own file say, in whichever order the files are asked.
TEST(NetUses, OfTheLaterPartOfATypeStandInItsFile) {
  test::NetProject project(
      {{"T.vb",
        "Namespace One\nPublic Class Thing\nEnd Class\nEnd Namespace\nNamespace Two\nPublic Class "
        "Thing\nEnd Class\nEnd Namespace\n"},
       {"A.vb",
        "Imports Root.One\nPartial Public Class P\nPrivate mCount As Integer\nSub A()\nDim x As "
        "New "
        "Thing\nEnd Sub\nEnd Class\n"},
       {"B.vb",
        "Imports Root.Two\nPartial Public Class P\n\nSub B()\nDim x As New Thing\nmCount = "
        "1\nEnd Sub\nEnd Class\n"}},
      test::Complete(), "Root");
  project.Resolve();
  std::string all;
  const auto show = [&](const NameUse& use) {
    if (use.Line < 4) return;
    all += use.File->LeafName() + ":" + std::to_string(use.Line) + " " + test::Shown(use, true) +
           " in " + use.Holder->ElementName() + "\n";
  };
  const std::string expected =
      "A.vb:5 Thing new project N~Root.One.Thing in A\n"
      "B.vb:5 Thing new project N~Root.Two.Thing in B\n"
      "B.vb:6 mCount write own-module N~Root.P~mCount in B\n";
  UseBinder(*project.Project).BindAll(show);
  EXPECT_EQ(all, expected);
  all.clear();
  UseBinder(*project.Project).Bind(project["Root.P"], show);
  EXPECT_EQ(all, expected);
}

// Of overloads the one that takes as many arguments, none in parentheses included; words of a
// namespace that no assembly at hand tells qualify.
TEST(NetUses, TellOverloadsAndNamespacesApart) {
  test::NetProject project(
      {{"A.vb",
        "Class Store\nOverloads ReadOnly Property Item() As String\nGet\nEnd Get\nEnd "
        "Property\nOverloads ReadOnly Property Item(i As Integer) As String\nGet\nEnd Get\nEnd "
        "Property\nOverloads Function Sum(i As Integer) As Integer\nEnd Function\nOverloads "
        "Function Sum() As Integer\nEnd Function\nEnd Class\n"},
       {"B.vb",
        "Module M\nSub Main()\nDim s As New Store\nDim t = s.Item & s.Item() & s.Item(1) & s.Sum & "
        "s.Sum(1)\nSystem.Nowhere.Things.Thing.Make(t)\nEnd Sub\nEnd Module\n"}},
      test::Complete(), "Root");
  project.Resolve();
  std::string all;
  UseBinder(*project.Project).BindAll([&](const NameUse& use) {
    if (use.File->LeafName() != "B.vb" || use.Line < 4 || use.Answer == UseAnswer::Local) return;
    all += std::string(use.Text) + " " + std::string(WordOf(use.Kind)) +
           (use.Element ? " " + use.Element->ElementName() : "") + "; ";
  });
  EXPECT_EQ(
      all,
      "Item read Item(); Item read Item(); Item read Item(Int32); Sum call Sum(); Sum call "
      "Sum(Int32); System qualify; Nowhere qualify; Things qualify; Thing qualify; Make call; ");
}

// The classic reading keeps the later part of a type in no list; its statements are read all the
// same.
TEST(NetUses, OfALaterPartAreReadInTheClassicReadingToo) {
  test::NetProject project({{"A.vb", "Public Class P\nSub Helper()\nEnd Sub\nEnd Class\n"},
                            {"B.vb",
                             "Partial Public Class P\nSub B()\nHelper()\nEnd Sub\nEnd "
                             "Class\n"}},
                           {}, "Root");
  project.Resolve();
  std::string all;
  UseBinder(*project.Project).BindAll([&](const NameUse& use) {
    all +=
        use.File->LeafName() + ":" + std::to_string(use.Line) + " " + std::string(use.Text) + "; ";
  });
  EXPECT_EQ(all, "B.vb:3 Helper; ");
}

TEST(NetUses, AreTheSameByFileAndByModule) {
  Users project("Sub S(n As Integer)\nn = Size\nEnd Sub\n");
  std::size_t whole = 0, single = 0;
  UseBinder binder(*project.Project, {true, true});
  binder.BindAll([&](const NameUse&) { ++whole; });
  for (const Component& module : std::as_const(project.Project->Components).Listed())
    binder.Bind(module, [&](const NameUse&) { ++single; });
  EXPECT_GT(whole, 30u);
  EXPECT_EQ(whole, single);
}

}  // namespace
}  // namespace vendrel
