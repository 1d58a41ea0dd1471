// What a failure leaves behind: values as text, contexts handed to the error object, words for
// fatal signals.

#include "diagnostics/ErrorReport.h"

#include <gtest/gtest.h>
#include <signal.h>

#include "core/ObjectRegistry.h"
#include "diagnostics/FatalSignals.h"
#include "output/TraceElement.h"
#include "support/Projects.h"

namespace vendrel {
namespace {

using Dimension = TraceValue::Dimension;

TraceValue Cube(std::vector<Dimension> dimensions, int count) {
  std::vector<TraceValue> elements;
  for (int i = 1; i <= count; ++i) elements.emplace_back(i);
  return TraceValue::Array(std::move(dimensions), std::move(elements));
}

TEST(TraceValue, IsDumpedByItsKind) {
  const struct {
    std::string_view Name;
    TraceValue Value;
    std::string_view Text;
  } rows[] = {
      {"a b", 5, "<a>5</a>\r\n"},
      {"a", std::string_view("x\0y", 3), "<a>x{Null}y</a>\r\n"},
      {"a", true, "<a>True</a>\r\n"},
      {"a", 0.5, "<a>0.5</a>\r\n"},
      {"a", TraceValue(), "<a>{Empty}\r\n"},
      {"a", TraceValue::Null(), "<a>{Null}\r\n"},
      {"a", TraceValue::Nothing(), "<a>{Nothing}\r\n"},
      {"a", TraceValue::DataObject(true), "<a>{DataObject}\r\n"},
      {"a", TraceValue::DataObject(false), "<a>{Nothing}\r\n"},
      {"a", TraceValue::Record("Point"), "<a>{UDT - Point}\r\n"},
      {"a", TraceValue::Object("Block"), "<a>{Block}</a>\r\n"},
      {"a", TraceValue::Failed(13), "<a>{Error 13 formatting for output}\r\n"},
      {"a", TraceValue::Enumerable({{"", 1}, {"Name", "x"}}),
       "<a>\r\n <[1]>1</[1]>\r\n <Name>x</Name>\r\n</a>\r\n"},
      {"a", Cube({{0, 1}}, 2), "<a>\r\n <a Index=\"0\">1</a>\r\n <a Index=\"1\">2</a>\r\n</a>\r\n"},
      {"a", Cube({{1, 2}, {1, 1}}, 1),
       "<a>\r\n <a Index=\"1,1\">1</a>\r\n <a Index=\"2,1\">{Empty}\r\n</a>\r\n"},
      {"a", Cube({{1, 1}, {1, 1}, {1, 1}}, 1), "<a>\r\n <a Index=\"1,1,1\">1</a>\r\n</a>\r\n"},
      {"a", Cube({{1, 1}, {1, 1}, {1, 1}, {1, 1}}, 1),
       "<a>{Dump truncated at 4 dimensions}</a>\r\n"},
      {"a", Cube({}, 0), "<a>{UnInitialised Array}</a>\r\n"},
      {"a", Cube({{1, 2}, {0, 0, false}}, 0), "<a>{UnInitialised Array Dimension 2}</a>\r\n"},
      {"a", Cube({{1, 0}}, 0), "<a>\r\n</a>\r\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(DumpValue(row.Name, row.Value), row.Text);
}

struct Recorder : ErrorObject {
  static inline std::vector<ErrorReport> Reports;
  Recorder() { Action = StepOver::SkipLine; }
  void ErrorHandlerEx(const ErrorReport& report) override { Reports.push_back(report); }
  void ErrorHandler(const ErrorReport& report) override { Reports.push_back(report); }
};

class ErrorObjectTest : public testing::Test {
 protected:
  ErrorObjectTest() {
    Recorder::Reports.clear();
    ObjectRegistry::Register<ErrorObject>(kErrorObject,
                                          [] { return std::make_shared<Recorder>(); });
  }
  ~ErrorObjectTest() override {
    ObjectRegistry::Register<ErrorObject>(kErrorObject, [] { return nullptr; });
  }
};

TEST_F(ErrorObjectTest, GetsEachContextFromTheInnermostOutwards) {
  VendrelError failure(errTypeMismatch, "here");
  failure.AddContext("Inner", "Room", 7).Parameter("a b", 1).Local("text", "x").Field("f", false);
  failure.AddContext("Outer", "House").Parameter("element", static_cast<CodeElement*>(nullptr));
  EXPECT_EQ(ReportError(failure), StepOver::SkipLine);
  ASSERT_EQ(Recorder::Reports.size(), 2u);
  const ErrorReport& inner = Recorder::Reports[0];
  EXPECT_EQ(inner.Procedure + " " + inner.Module + " " + std::to_string(inner.Line),
            "Inner Room 7");
  EXPECT_EQ(inner.Parameters, " <Parameters>\r\n  <a>1</a>\r\n </Parameters>\r\n");
  EXPECT_EQ(inner.Variables,
            " <Variables>\r\n  <LocalVariables>\r\n   <text>x</text>\r\n  </LocalVariables>\r\n"
            "  <ModuleVariables>\r\n   <f>False</f>\r\n  </ModuleVariables>\r\n"
            "  <GlobalVariables>{Disabled}</GlobalVariables>\r\n </Variables>\r\n");
  EXPECT_NE(Recorder::Reports[1].Parameters.find("{Nothing}"), std::string::npos);
  ReportError(VendrelError(errFileNotFound));
  EXPECT_EQ(Recorder::Reports.back().Description, "File not found");
}

TEST_F(ErrorObjectTest, MayLetTheReaderStepOverALine) {
  // A condition that does not compile is a failure of its line in the classic reading.
  test::TestModule module("M.bas", "#If (1 Then\n#End If\nSub A()\nEnd Sub\n");
  EXPECT_FALSE(Recorder::Reports.empty());
  EXPECT_NE(module->Blocks.Item("A"), nullptr);
}

TEST(FatalSignals, HaveTheirWords) {
  EXPECT_EQ(FatalSignalName(SIGSEGV, SEGV_MAPERR), "Access Violation");
  EXPECT_EQ(FatalSignalName(SIGFPE, FPE_INTDIV), "Integer Divide By Zero");
  EXPECT_EQ(FatalSignalName(SIGBUS, BUS_ADRALN), "Data Type Misalignment");
  EXPECT_EQ(FatalSignalName(SIGABRT, 0), "Unknown (&H00000006)");
}

#if !defined(VENDREL_SANITIZED)
[[gnu::noinline]] int Deep(volatile int* depth) {
  volatile char room[4096];
  room[0] = static_cast<char>(*depth);
  *depth = *depth + 1;
  if (*depth < 0) return 0;  // never: the stack ends first
  return Deep(depth) + room[0];
}

TEST(FatalSignalsDeathTest, AreToldAndPassedOn) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto end = [](int signal) {
    InstallFatalSignalHandler();
    raise(signal);
  };
  EXPECT_EXIT(end(SIGFPE), testing::KilledBySignal(SIGFPE), "vendrelmodel: ");
  EXPECT_EXIT(end(SIGABRT), testing::KilledBySignal(SIGABRT), "Unknown \\(&H00000006\\)");
  EXPECT_EXIT(
      {
        InstallFatalSignalHandler();
        volatile int depth = 0;
        Deep(&depth);
      },
      testing::KilledBySignal(SIGSEGV), "Stack Overflow");
}
#endif

}  // namespace
}  // namespace vendrel
