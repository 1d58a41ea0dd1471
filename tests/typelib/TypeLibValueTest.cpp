#include "typelib/reader/TypeLibValue.h"

#include <gtest/gtest.h>

namespace vendrel::typelib {
namespace {

TEST(TypeLibValue, WritesNumbersAsTheLanguageDoes) {
  struct {
    double Number;
    int Digits;
    const char* Text;
  } const cases[] = {{0.5, 15, ".5"},
                     {-0.25, 15, "-.25"},
                     {0, 15, "0"},
                     {100, 15, "100"},
                     {1234.5, 15, "1234.5"},
                     {1e15, 15, "1E+15"},
                     {123456789012345, 15, "123456789012345"},
                     {1e-7, 15, ".0000001"},
                     {1.5e-20, 15, "1.5E-20"},
                     {1.0 / 3, 15, ".333333333333333"},
                     {3.402823466e38, 7, "3.402823E+38"},
                     {0.1f, 7, ".1"},
                     {-1.7976931348623157e308, 15, "-1.79769313486232E+308"}};
  for (const auto& expected : cases)
    EXPECT_EQ(NumberText(expected.Number, expected.Digits), expected.Text);
}

TEST(TypeLibValue, WritesDatesOfAnAmericanMachine) {
  struct {
    double Days;
    const char* Text;
  } const cases[] = {{32, "1/31/1900"},
                     {0, "12:00:00 AM"},
                     {-1.9999999, "12/30/1899"},
                     {0.5, "12:00:00 PM"},
                     {36526.75, "1/1/2000 6:00:00 PM"},
                     {-1.25, "12/29/1899 6:00:00 AM"},
                     {60, "2/28/1900"},
                     {61, "3/1/1900"},
                     {2958465, "12/31/9999"},
                     {-657434, "1/1/100"},
                     {2958466, "2958466"},
                     {1.9999999, "1/1/1900"}};
  for (const auto& expected : cases) EXPECT_EQ(DateText(expected.Days), expected.Text);
}

TEST(TypeLibValue, KnowsWhatIsNumeric) {
  const auto text = [](std::string_view s) { return TypeLibValue{vtBstr, 0, 0, s, false}; };
  EXPECT_TRUE((TypeLibValue{vtBool, -1, 0, {}, false}.IsNumeric()));
  EXPECT_TRUE((TypeLibValue{vtCurrency, 1, 0, {}, false}.IsNumeric()));
  EXPECT_FALSE((TypeLibValue{vtDate, 0, 1, {}, false}.IsNumeric()));
  EXPECT_FALSE((TypeLibValue{vtDispatch, 0, 0, {}, true}.IsNumeric()));
  for (const char* number : {"12", " -1.5e3 ", "&HFF"})
    EXPECT_TRUE(text(number).IsNumeric()) << number;
  for (const char* word : {"", "none", "1x", "&HG", "inf", "nan", "0x10"})
    EXPECT_FALSE(text(word).IsNumeric()) << word;
}

TEST(TypeLibValue, WritesCurrencyToTheLastUnit) {
  EXPECT_EQ((TypeLibValue{vtCurrency, 1, 0, {}, false}.Text()), ".0001");
  EXPECT_EQ((TypeLibValue{vtCurrency, -25000, 0, {}, false}.Text()), "-2.5");
  EXPECT_EQ((TypeLibValue{vtCurrency, INT64_MIN, 0, {}, false}.Text()), "-922337203685477.5808");
}

}  // namespace
}  // namespace vendrel::typelib
