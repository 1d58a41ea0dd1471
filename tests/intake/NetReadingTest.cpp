// VB.NET members in the complete reading: what each line of real-looking source becomes.

#include <gtest/gtest.h>

#include "core/Ascii.h"
#include "intake/LineIntake.h"
#include "model/Namespace.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using test::Describe;

struct NetType {
  explicit NetType(std::string_view lines, bool isInterface = false) {
    Project.Reading = ReadingRules::Complete();
    Project.SetLanguageVersion(lvVisualBasicDotNet);
    Space.Name = "N";
    auto component = std::make_shared<Component>();
    component->Name = "C";
    component->SetVBProject(&Project);
    component->Namespace = &Space;
    component->IsInterface = isInterface;
    component->CurrentBlock = component->NewBlock(btDeclarations);
    Module = component.get();
    Project.Components.Add(component, "C");
    while (!lines.empty()) component->AddLineOfCode(TakeField(lines, '\n'));
    FinishLines(*component);
  }
  // Every member in a line, without places.
  std::string Tree() const {
    std::string text = Describe(*Module);
    text = ReplaceAll(text, " @0\n", "\n");
    return text.substr(text.find('\n') + 1);
  }
  VBProject Project;
  Namespace Space;
  Component* Module;
};

struct Case {
  const char* Lines;
  const char* Tree;
};

void Expect(std::initializer_list<Case> cases, bool isInterface = false) {
  for (const Case& c : cases) EXPECT_EQ(NetType(c.Lines, isInterface).Tree(), c.Tree) << c.Lines;
}

TEST(NetReadingTest, Fields) {
  Expect({
      {"Private t As New Timer(), g As New List(Of Integer)()\n",
       " declarations\n"
       "  var PRIVATE t As Timer @1/0\n"
       "  var PRIVATE g As List(Of Integer) @1/0\n"},
      {"Private a, b As Integer\n",
       " declarations\n"
       "  var PRIVATE a As System.Int32 @1/0\n"
       "  var PRIVATE b As System.Int32 @1/0\n"},
      {"Dim WithEvents t As Timer, u As New Timer(5, \"x,y\")\n",
       " declarations\n"
       "  var PRIVATE t As Timer events @1/0\n"
       "  var PRIVATE u As Timer events @1/0\n"},
      {"Shared ReadOnly cache As New Dictionary(Of String, List(Of Integer)) From {{\"a\", x}}\n",
       " declarations\n"
       "  var PRIVATE cache As Dictionary(Of String, List(Of Integer)) static @1/0\n"},
      {"Friend Const Limit As Integer = 4, Name = \"a,b\"\nConst Low = 1\n",
       " declarations\n"
       "  const FRIEND Limit=4 As System.Int32\n"
       "  const FRIEND Name=\"a,b\"\n"
       "  const PRIVATE Low=1\n"},
      {"Protected Friend x? As Integer, y(5) As Byte, z As Integer()(,)\n",
       " declarations\n"
       "  var PROTECTED FRIEND x As Integer? @1/0\n"
       "  var PROTECTED FRIEND y(5) As System.Byte @1/0\n"
       "  var PROTECTED FRIEND z() As Integer() @1/0\n"},
      {"WithEvents button As Button\n<NonSerialized()> Private [stop] As Boolean\n",
       " declarations\n"
       "  var PRIVATE button As Button events @1/0\n"
       "  var PRIVATE stop As System.Boolean @2/0\n"},
  });
}

TEST(NetReadingTest, Procedures) {
  Expect({
      {"Public Async Function Load(Of T As {Class, New})(ByVal key As String,\n"
       "    Optional ByVal all As Boolean = True) As Task(Of List(Of T))\n"
       "  Dim x = Await Read()\nEnd Function\nPrivate after As Integer\n",
       " declarations\n"
       "  var PRIVATE after As System.Int32 @5/0\n"
       " function PUBLIC Load(ByVal key As System.String, Optional ByVal all As System.Boolean = "
       "True) As Task(Of List(Of T))\n"
       "  var PRIVATE x As System.Object implicit @3/0\n"},
      {"Private Sub Tick(sender As Object, e As EventArgs) _\n   Handles a.Tick, b.Tick\nEnd Sub\n",
       " declarations\n"
       " sub PRIVATE Tick(ByVal sender As Object, ByVal e As EventArgs) on ?\n"},
      {"Private Sub Shown() Handles Me.Load\nEnd Sub\n",
       " declarations\n"
       " sub PRIVATE Shown() on C\n"},
      {"Public Function Compare(x As [Object], y()() As T) As Integer Implements "
       "IComparer(Of T).Compare, IFoo.Bar\nEnd Function\n",
       " declarations\n"
       " function PUBLIC Compare(ByVal x As Object, ByVal y() As T()) As System.Int32\n"},
      {"Public Shared Operator -(a As V, b As V) As V\nEnd Operator\n"
       "Public Shared Operator -(a As V) As V\nEnd Operator\n"
       "Public Shared Narrowing Operator CType(a As V) As Integer\nEnd Operator\n",
       " declarations\n"
       " function PUBLIC op_Subtraction(ByVal a As V, ByVal b As V) As V\n"
       " function PUBLIC op_UnaryNegation(ByVal a As V) As V\n"
       " function PUBLIC op_Explicit(ByVal a As V) As System.Int32\n"},
      {"Sub New()\nMyBase.New()\nEnd Sub\nShared Sub New()\nEnd Sub\n",
       " declarations\n"
       " sub PUBLIC _ctor() constructor\n"
       " sub PUBLIC _cctor() constructor\n"},
      {"Private Declare Auto Function Beep Lib \"kernel32\" (ByVal f As Integer) As Boolean\n",
       " declare PRIVATE function Beep lib kernel32.dll(ByVal f As System.Int32) As Boolean @1/0\n"
       " declarations\n"},
      {"Public Delegate Function Pick(Of T)(item As T) As Boolean\nPrivate x As Integer\n",
       " declarations\n"
       "  var PRIVATE x As System.Int32 @2/0\n"},
      {"<Obsolete(\"a > b\")>\n<Browsable(False), _\n Category(\"x\")>\nFriend Sub S(\n"
       "  <Out()> ByRef a As Integer, ' the first\n  ParamArray rest() As String\n)\nEnd Sub\n",
       " declarations\n"
       " sub FRIEND S(a As System.Int32, ParamArray ByVal rest() As System.String) @1\n"},
      {"Protected MustOverride Sub Draw(g As Graphics)\nPrivate x As Integer\n",
       " declarations\n"
       "  var PRIVATE x As System.Int32 @2/0\n"
       " sub PROTECTED Draw(ByVal g As Graphics) abstract\n"},
  });
}

// Each block has names of its own; both stay, and nothing is told.
TEST(NetReadingTest, TuplesAreTheTypesThatStandForThem) {
  Expect({
      {"Private t As (a As Integer, String), u As Integer\n"
       "Function F(a As (x As A, (B, C))()) As (Integer, b As String)\nEnd Function\n",
       " declarations\n"
       "  var PRIVATE t As System.ValueTuple(Of Integer, String) @1/0\n"
       "  var PRIVATE u As System.Int32 @1/0\n"
       " function PUBLIC F(ByVal a() As System.ValueTuple(Of A, System.ValueTuple(Of B, C))) As "
       "System.ValueTuple(Of Integer, String)\n"},
  });
}

TEST(NetReadingTest, EventsOfOneNameHaveDelegatesOfTheirOwn) {
  NetType type("Public Event E(x As Integer)\n");
  EXPECT_EQ(type.Module->EventDeclarations.Item(1)->DelegateName, "N.C.EEventHandler");
  EXPECT_TRUE(type.Space.Delegates.HasKey("C.EEventHandler"));
}

TEST(NetReadingTest, ANameInBracketsIsNoConstructor) {
  const NetType type("Sub [New](x As Integer)\nEnd Sub\nSub New()\nEnd Sub\n");
  const Block* method = type.Module->Blocks.Item("New");
  ASSERT_TRUE(method);
  EXPECT_FALSE(method->IsConstructor);
  const Block* constructor = type.Module->Blocks.Item("_ctor");
  ASSERT_TRUE(constructor);
  EXPECT_TRUE(constructor->IsConstructor);
}

TEST(NetReadingTest, LocalsOfOneNameStandSideBySide) {
  Expect({{"Sub S()\nIf a Then\nDim x As Integer\nElse\nDim x As String\nEnd If\nEnd Sub\n",
           " declarations\n"
           " sub PUBLIC S()\n"
           "  var PRIVATE x As System.Int32 @3/0\n"
           "  var PRIVATE x As System.String @5/0\n"}});
}

TEST(NetReadingTest, Properties) {
  Expect({
      {"Public Property Total As Integer = 5\nPrivate a As Integer\n",
       " property PUBLIC Total get set\n"
       " declarations\n"
       "  var PRIVATE a As System.Int32 @2/0\n"
       " get PUBLIC Total() As System.Int32 access=3\n"},
      {"Public Property Items As New List(Of String) From {\"a\",\n  \"b\"}\nPrivate a As "
       "Integer\n",
       " property PUBLIC Items get set\n"
       " declarations\n"
       "  var PRIVATE a As System.Int32 @3/0\n"
       " get PUBLIC Items() As List(Of String) access=3\n"},
      {"Public ReadOnly Property Name As String\n''' after\nPrivate a As Integer\n",
       " property PUBLIC Name get\n"
       " declarations\n"
       "  var PRIVATE a As System.Int32 @3/0\n"
       " get PUBLIC Name() As System.String access=2\n"},
      {"Public Property A As Integer\nPublic Property B As Integer\n",
       " property PUBLIC A get set\n"
       " property PUBLIC B get set\n"
       " declarations\n"
       " get PUBLIC A() As System.Int32 access=3\n"
       " get PUBLIC B() As System.Int32 access=3\n"},
      {"Default Public Overridable Property Item(i As Integer) As String Implements IList.Item\n"
       "  <DebuggerStepThrough()>\n  Get\n    Dim x = 1\n    Return x\n  End Get\n"
       "  Private Set(value As String)\n  End Set\nEnd Property\nPrivate z As Integer\n",
       " property PUBLIC Item get set\n"
       " declarations\n"
       "  var PRIVATE z As System.Int32 @10/0\n"
       " get PUBLIC Item(ByVal i As System.Int32) As System.String virtual access=3\n"
       "  var PRIVATE x As System.Object implicit @4/0\n"},
  });
}

TEST(NetReadingTest, Events) {
  Expect({
      {"Public Event Changed As EventHandler(Of ChangedEventArgs)\n",
       " event PUBLIC Changed() @1/0\n"
       " declarations\n"},
      {"Public Event Done(ByVal sender As Object)\n",
       " event PUBLIC Done(ByVal sender As Object) @1/0\n"
       " declarations\n"},
      {"Public Custom Event Click As EventHandler Implements IB.Click\n"
       "  AddHandler(ByVal value As EventHandler)\n    Dim x As Integer\n  End AddHandler\n"
       "  RemoveHandler(ByVal value As EventHandler)\n  End RemoveHandler\n"
       "  RaiseEvent(sender As Object, e As EventArgs)\n  End RaiseEvent\nEnd Event\n"
       "Private a As Integer\n",
       " event PUBLIC Click() @1/0\n"
       " declarations\n"
       "  var PRIVATE a As System.Int32 @10/0\n"},
  });
}

TEST(NetReadingTest, InterfaceMembersHaveNoBodies) {
  Expect({{"Inherits IA, IB(Of T, U)\nSub Draw()\nFunction Area() As Double\n"
           "ReadOnly Property Name As String\nProperty Size As Integer\nEvent Done()\n",
           " implements IA @0/0\n"
           " implements IB(Of T, U) @0/0\n"
           " event PUBLIC Done() @2/0\n"
           " property PUBLIC Name get\n"
           " property PUBLIC Size get set\n"
           " declarations\n"
           " sub PUBLIC Draw()\n"
           " function PUBLIC Area() As System.Double\n"
           " get PUBLIC Name() As System.String access=2\n"
           " get PUBLIC Size() As System.Int32 access=3\n"}},
         true);
}

TEST(NetReadingTest, Lambdas) {
  Expect({
      {"Sub A()\n  Run(Sub(x)\n        Dim y = 1\n      End Sub, 5)\n  Dim z As Integer\nEnd Sub\n"
       "Private after As Integer\n",
       " declarations\n"
       "  var PRIVATE after As System.Int32 @7/0\n"
       " sub PUBLIC A()\n"
       "  var PRIVATE y As System.Object implicit @3/0\n"
       "  var PRIVATE z As System.Int32 @5/0\n"},
      {"Function B() As Integer\n  Dim f = Function(x As Integer) As List(Of Integer)\n"
       "            Return Nothing\n          End Function\n  Dim g = Sub() Go()\n  Return 1\n"
       "End Function\nPrivate after As Integer\n",
       " declarations\n"
       "  var PRIVATE after As System.Int32 @8/0\n"
       " function PUBLIC B() As System.Int32\n"
       "  var PRIVATE f As System.Object implicit @2/0\n"
       "  var PRIVATE g As System.Object implicit @5/0\n"},
      {"Sub C()\n  AddHandler x.Click, Async Sub(s, e)\n    Await Go()\n  End Sub\nEnd Sub\n"
       "Private after As Integer\n",
       " declarations\n"
       "  var PRIVATE after As System.Int32 @6/0\n"
       " sub PUBLIC C()\n"},
  });
}

TEST(NetReadingTest, WhatStandsInTextsAndLiteralsDeclaresNothing) {
  Expect({
      {"Sub A()\n  Dim s = $\"Public Sub {If(x, \"a\", \"b\")} ' no\" ' comment\n"
       "  Dim x = <a b=\"'\">End Sub : Dim q</a>\n  If a <b Then c = 1\n  Dim d = #1/2/2003#\n"
       "  y = 1& _ ' goes on\n   + 2\nEnd Sub\nPrivate after As Integer\n",
       " declarations\n"
       "  var PRIVATE after As System.Int32 @9/0\n"
       " sub PUBLIC A()\n"
       "  var PRIVATE s As System.Object implicit 'comment' @2/0\n"
       "  var PRIVATE x As System.Object implicit @3/0\n"
       "  var PRIVATE d As System.Object implicit @5/0\n"},
  });
}

// What is not understood stays a line.
TEST(NetReadingTest, AnOpenListSwallowsNoMember) {
  Expect({
      {"Sub A()\n  Run(1,\n  2\nEnd Sub\nPublic Sub B()\nEnd Sub\n",
       " declarations\n"
       " sub PUBLIC A()\n"
       " sub PUBLIC B()\n"},
      {"Sub A()\n  Run(Sub()\n  x = 1\nPublic Function B() As Integer\nEnd Function\n"
       "Private after As Integer\n",
       " declarations\n"
       "  var PRIVATE after As System.Int32 @3/0\n"
       " sub PUBLIC A()\n"
       " function PUBLIC B() As System.Int32\n"},
      {"Public Property \nPublic ) x\nSub B()\nEnd Sub\n",
       " declarations\n"
       " sub PUBLIC B()\n"},
  });
}

TEST(NetReadingTest, DeclaredTypes) {
  const NetType net("Inherits Base(Of T)\nImplements IA, IB(Of T, U)\n");
  EXPECT_EQ(net.Module->InheritsFrom, "Base(Of T)");
  std::string names;
  for (const Interface& one : net.Module->Interfaces) names += one.Name + ";";
  EXPECT_EQ(names, "IA;IB(Of T, U);");
}

}  // namespace
}  // namespace vendrel
