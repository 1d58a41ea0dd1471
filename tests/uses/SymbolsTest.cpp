// Names as numbers: however a name is met, it has one number.
#include "uses/Symbols.h"

#include <gtest/gtest.h>

#include <string>

namespace vendrel {
namespace {

// At the front of a text its end is looked for eight bytes in a step.
TEST(Symbols, ANameAtTheFrontIsTheNameAlone) {
  Symbols symbols;
  const std::string longest(200, 'n');
  for (const std::string& name :
       {std::string("a"), std::string("Seven77"), std::string("Eight_88"), std::string("Nine_Nine"),
        std::string("AmountOfLedger_1"), std::string("Z@[`{"), std::string("Straße"),
        std::string("Ünten"), longest, longest.substr(0, 128), longest.substr(0, 127) + "é"})
    for (const std::string& behind :
         {std::string(), std::string(" = 1"), std::string("(x)        "),
          std::string("/:@[`{~.........")}) {
      const std::string written = name.substr(0, name.find_first_of("@[`{"));
      const auto front = symbols.OfFront(written + behind);
      EXPECT_EQ(front.Size, written.size()) << written << behind;
      EXPECT_EQ(front.Name, symbols.Of(written)) << written << behind;
    }
  EXPECT_EQ(symbols.OfFront("(a)      ").Size, 0u);
  EXPECT_EQ(symbols.OfFront("ELSEIF x As Long").Name, word::ElseIf);
}

TEST(Symbols, NamesThatFoldToOneAreOne) {
  Symbols symbols;
  EXPECT_EQ(symbols.Of("\xE2\x84\xAA"), symbols.Of("k"));  // the sign of the unit Kelvin
  EXPECT_EQ(symbols.Of("ÜNTEN"), symbols.OfFront("ünten.x").Name);
  EXPECT_NE(symbols.Of("AmountOfLedger_1"), symbols.Of("AmountOfLedger_2"));
  EXPECT_NE(symbols.Of("abcdefgh"), symbols.Of("abcdefghi"));
  const Symbol first = symbols.Of("FirstOfMany");
  for (int i = 0; i < 20000; ++i) symbols.Of("Name" + std::to_string(i));
  EXPECT_EQ(symbols.Of("firstofmany"), first);
  EXPECT_EQ(symbols.OfFront("NAME12345 = 1").Name, symbols.Of("name12345"));
}

}  // namespace
}  // namespace vendrel
