#include "intake/net/LineShapes.h"

#include <gtest/gtest.h>

#include "intake/net/NetStatementScan.h"

namespace vendrel {
namespace {

using Shape = NetLineShape;

struct ShapeCase {
  std::string_view Line;
  NetLineShape Expected;
};

constexpr ShapeCase kShapes[] = {
    {"", Shape::Bare},
    {" \t", Shape::Bare},
    {"  ' x = (", Shape::Bare},
    {"Rem x = (", Shape::Bare},
    {"  #If A Then", Shape::Bare},
    {"x = 1", Shape::Plain},
    {"\tFoo(1, \"a \"\" b\")\t", Shape::Plain},
    {".Foo = 1", Shape::Plain},
    {"If a < b And c Then", Shape::Plain},
    {"Else", Shape::Plain},
    {"Case 1", Shape::Whole},
    {"Exit Sub", Shape::Whole},
    {"End Sub", Shape::Whole},
    {"Public Sub Foo()", Shape::Whole},
    {"Dim x = 1", Shape::Whole},
    {"If a Then Dim b = 1", Shape::Whole},
    {"10 x = 1", Shape::Whole},
    {"x = 1 ' why", Shape::Whole},
    {"x  = 1", Shape::Whole},
    {"x = \"a  b\"", Shape::Whole},
    {"\xC3\xA4 = 1", Shape::Whole},
    {"Foo(a:=1)", Shape::Plain},
    {"a.From", Shape::Unclear},
    {"x = a.Is", Shape::Plain},
    {"x = a &", Shape::Unclear},
    {"x = a&", Shape::Plain},
    {"x = a And ' b", Shape::Unclear},
    {"With", Shape::Plain},
    {"Foo(a,", Shape::Unclear},
    {"a = {1,", Shape::Unclear},
    {"a: b", Shape::Unclear},
    {"x = 1 _", Shape::Unclear},
    {"x = \"open", Shape::Unclear},
    {"x = $\"a\"", Shape::Unclear},
    {"[End] = 1", Shape::Unclear},
    {"<Obsolete>", Shape::Unclear},
    {"Public <Obsolete> x", Shape::Unclear},
    {"x = <a>", Shape::Unclear},
    {"If a <> b Then", Shape::Plain},
    {"y = From p In q", Shape::Unclear},
    {"f = Sub (x)", Shape::Unclear},
    {"x = Function(a) a", Shape::Unclear},
};

TEST(LineShapes, AreToldByTheLineAlone) {
  for (const auto& [line, shape] : kShapes) EXPECT_EQ(ShapeOfNetLine(line), shape) << line;
}

TEST(LineShapes, AgreeWithTheWalkOverTokens) {
  for (const auto& [line, shape] : kShapes) {
    if (shape == Shape::Unclear) continue;
    NetStatementScan scan;
    scan.Begin();
    EXPECT_FALSE(scan.Feed(line, "x = 1")) << line;
  }
}

TEST(LineShapes, AreToldInOneWalk) {
  constexpr std::size_t kMany = 400'000;
  for (const std::string_view part : {"<", "(", "g", "m", "_ ", "\"\"", " ", "(a "}) {
    std::string line(kMany, 'a');
    for (std::size_t i = 0; i < kMany; ++i) line += part;
    EXPECT_NE(ShapeOfNetLine(line), Shape::Bare) << part;
  }
}

TEST(LineShapes, AWholeLineIsJoinedByHandlesAndImplements) {
  NetStatementScan scan;
  EXPECT_TRUE(scan.TakeWhole("x = 1"));
  EXPECT_TRUE(scan.TakeWhole("  If x Then"));
  EXPECT_FALSE(scan.TakeWhole("  handles a.b"));
  EXPECT_FALSE(scan.TakeWhole("\tImplements IFoo.Bar"));
}

}  // namespace
}  // namespace vendrel
