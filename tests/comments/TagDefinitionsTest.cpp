#include "comments/TagDefinitions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "comments/TaggedCommentRules.h"
#include "core/Workspace.h"
#include "support/Raised.h"
#include "support/SourceRoot.h"

namespace vendrel {
namespace {

TaggedComment Parsed(std::string_view source) {
  TaggedComment comment;
  EXPECT_TRUE(comment.Initialise(source));
  return comment;
}

TEST(TaggedComment, IsParsedByItsDefinition) {
  struct Case {
    const char* Source;
    const char* Tag;
    const char* Qualifier;
    const char* Text;
  };
  const Case cases[] = {
      {"##summary Text", "##SUMMARY", "", "Text"},
      {"##SUMMARY", "##SUMMARY", "", ""},
      {"##SUMMARY  two blanks", "##SUMMARY", "", " two blanks"},
      {"##PARAM   Name   The text", "##PARAM", "Name", "  The text"},
      {"##PARAM Name", "##PARAM", "Name", ""},
      {"##PARAM Name  x  ", "##PARAM", "Name", " x"},
      {"##VARIABLE_SUMMARY x The x", "##VARIABLE_SUMMARY", "x", "The x"},
      {"##INTERFACE_ALIAS IFoo path", "##INTERFACE_ALIAS", "", "IFoo path"},
      {"##UNKNOWN a b", "##UNKNOWN", "", "a b"},
      {"## more", "##", "", "more"},
      {"plain words", "PLAIN", "", "words"},
  };
  for (const Case& c : cases) {
    const TaggedComment comment = Parsed(c.Source);
    EXPECT_EQ(comment.TagIdentifier, c.Tag) << c.Source;
    EXPECT_EQ(comment.Qualifier, c.Qualifier) << c.Source;
    EXPECT_EQ(comment.Text, c.Text) << c.Source;
  }
}

TEST(TaggedComment, IsRecognisedByItsFirstWord) {
  EXPECT_TRUE(IsTaggedCommentText("##Summary a"));
  EXPECT_TRUE(IsTaggedCommentText("##"));
  EXPECT_TRUE(IsTaggedCommentText("## a"));
  EXPECT_FALSE(IsTaggedCommentText("##SUMMARYX"));
  EXPECT_FALSE(IsTaggedCommentText("# SUMMARY"));
  EXPECT_FALSE(IsTaggedCommentText(" ##SUMMARY"));
}

TEST(TaggedComment, IsClonedWithoutStateAndLine) {
  TaggedComment comment = Parsed("##PARAM a x");
  comment.Tag = "t";
  comment.State = "s";
  comment.LineIndex = 3;
  comment.AlwaysJoinWithWhitespace = true;
  const auto copy = comment.Clone();
  EXPECT_EQ(copy->TagIdentifier + copy->Qualifier + copy->Text + copy->Tag, "##PARAMaxt");
  EXPECT_EQ(copy->State, "");
  EXPECT_EQ(copy->LineIndex, 0);
  EXPECT_FALSE(copy->AlwaysJoinWithWhitespace);
}

class UpgradeTest : public testing::Test {
 protected:
  void SetUp() override { State().mUpgradeLegacyTaggedcomments = true; }
  void TearDown() override {
    State().mUpgradeLegacyTaggedcomments = false;
    State().mTaggedCommentUpgradeFlag.clear();
    TemplateObjects::Install(nullptr);
  }
  static void Use(std::string_view json) {
    struct Host : TemplateObjects {
      vendrel::TaggedCommentDefs Definitions;
      const vendrel::TaggedCommentDefs& TaggedCommentDefs() const override { return Definitions; }
    };
    auto host = std::make_shared<Host>();
    host->Definitions = ReadTagDefinitions(json, "t.json");
    TemplateObjects::Install(host);
  }
};

TEST_F(UpgradeTest, FollowsChainsAndPutsOffWhereFlagged) {
  TaggedComment comment = Parsed("##BLOCK_DESCRIPTION a");
  EXPECT_EQ(comment.TagIdentifier, "##BLOCK_DESCRIPTION");
  comment.Upgrade(false);
  EXPECT_EQ(comment.TagIdentifier, "##SUMMARY");
  EXPECT_EQ(Parsed("##ISNEW").TagIdentifier, "##IS_NEW");
  EXPECT_EQ(Parsed("## a").TagIdentifier, "##SUMMARY");
  State().mTaggedCommentUpgradeFlag = "P";
  comment = Parsed("##BLOCK_REMARKS a");
  comment.Upgrade(false);
  EXPECT_EQ(comment.TagIdentifier, "##BLOCK_REMARKS");
}

TEST_F(UpgradeTest, TakesTheTableOfAHost) {
  Use(R"({"tags": [{"TagIdentifier": "##note", "ElementType": 3},
                   {"TagIdentifier": "##OLD", "UpgradeTo": "##NOTE"}], "replace": true})");
  EXPECT_EQ(Parsed("##old x").TagIdentifier, "##NOTE");
  EXPECT_FALSE(IsTaggedCommentText("##SUMMARY x"));
  EXPECT_FALSE(IsTaggedCommentText("## x")) << "it would become a summary, which is not defined";
}

TEST(AddTaggedComment, JoinsCommentsOfOneKey) {
  const auto added = [](bool isBuffer, bool preserve) {
    TaggedComments col;
    for (const char* source : {"##REMARKS a", "##PARAM A x", "##PARAM B y", "##REMARKS b"})
      AddTaggedComment(col, std::make_shared<TaggedComment>(Parsed(source)), isBuffer, preserve);
    std::string result;
    for (const TaggedComment& comment : col)
      result += comment.TagIdentifier + "=" + comment.Text + ";";
    return result + (col.HasKey("##param:b") ? "B" : "") + (col.HasKey("##PARAM") ? "P" : "");
  };
  EXPECT_EQ(added(false, false), "##REMARKS=a<p>b</p>;##PARAM=x<crlf>y;P");
  EXPECT_EQ(added(true, false), "##REMARKS=a<p>b</p>;##PARAM=x;##PARAM=y;B");
  EXPECT_EQ(added(false, true), "##REMARKS=a;##PARAM=x;##PARAM=y;##REMARKS=b;");
}

TEST(TaggedCommentDefs, AreFoundInAnyCase) {
  const TaggedCommentDefs& definitions = BuiltinTagDefinitions();
  EXPECT_EQ(definitions.Item("##summary").TagIdentifier, "##SUMMARY");
  EXPECT_EQ(definitions.Find("SUMMARY"), nullptr);
  EXPECT_EQ(definitions.Find("##SUMMAR"), nullptr);
  EXPECT_THROW(definitions.Item("##NONE"), VendrelError);
  EXPECT_EQ(definitions.UpgradeFault(), "");
}

TEST(ReadTagDefinitions, RefusesWhatIsWrongAndNamesIt) {
  const struct {
    const char *Json, *Reason;
  } cases[] = {
      {"{\"tags\": [\n  oops]}", "t.json: line 2, column 3: not well-formed JSON"},
      {"[]", "t.json: an object with an array \"tags\" is expected"},
      {R"({"tags": [{"TagIdentifier": "##A"}, 5]})", "t.json: entry 2: an object is expected"},
      {R"({"tags": [{"Scope": "x"}]})", "t.json: entry 1: TagIdentifier is missing"},
      {R"({"tags": [{"TagIdentifier": "A"}]})",
       "t.json: entry 1 (A): a tag begins with \"##\" and holds no blank"},
      {R"({"tags": [{"TagIdentifier": "##A"}, {"TagIdentifier": "##a"}]})",
       "t.json: entry 2 (##a): the tag is repeated"},
      {R"({"tags": [{"TagIdentifier": "##A", "WrapType": 4}]})",
       "t.json: entry 1 (##A): WrapType: a number from 1 to 3 is expected"},
      {R"({"tags": [{"TagIdentifier": "##A", "IsDescription": 1}]})",
       "t.json: entry 1 (##A): IsDescription: true or false is expected"},
      {R"({"tags": [{"TagIdentifier": "##A", "Wrap": 1}]})",
       "t.json: entry 1 (##A): Wrap: no such property"},
      {R"({"tags": [{"TagIdentifier": "##A", "UpgradeTo": "##B"}]})",
       "t.json: entry 1 (##A): UpgradeTo names no tag: ##B"},
      {R"({"tags": [{"TagIdentifier": "##A", "UpgradeTo": "##B"},
                    {"TagIdentifier": "##B", "UpgradeTo": "##C"},
                    {"TagIdentifier": "##C", "UpgradeTo": "##b"}]})",
       "t.json: entry 3 (##C): UpgradeTo leads in a circle: ##b"},
      {R"({"tags": [{"TagIdentifier": "##A", "UpgradeTo": "##A"}]})",
       "t.json: entry 1 (##A): UpgradeTo leads in a circle: ##A"},
  };
  for (const auto& c : cases) {
    std::string text;
    EXPECT_EQ(test::Raised([&] { ReadTagDefinitions(c.Json, "t.json"); }, &text),
              errInvalidArgument);
    EXPECT_EQ(text, std::string(ErrorText(errInvalidArgument)) + ": " + c.Reason);
  }
}

// The page is for people, the table for the system: one row a tag, and each tag in a row.
std::string PageRow(const TaggedCommentDef& definition) {
  static constexpr const char* kinds[] = {"",
                                          "project group",
                                          "project",
                                          "module",
                                          "procedure",
                                          "variable",
                                          "parameter",
                                          "(none)",
                                          "event",
                                          "enumeration",
                                          "enumeration member",
                                          "structure",
                                          "structure member",
                                          "declare",
                                          "interface"};
  static constexpr const char* wraps[] = {"", "blank", "line break", "paragraph"};
  std::string where = kinds[definition.ElementType];
  if (where.empty())
    where = definition.Scope.starts_with("FZ:Method,FZ:Property,FZ:Variable") ? "any element"
            : definition.Scope == "FZ:Parameter"                              ? "parameter"
            : definition.Scope == "FZ:ImplementedInterface"                   ? "interface"
                                                            : "procedure, declare";
  std::string upgrade = definition.UpgradeTo.empty() ? "" : "`" + definition.UpgradeTo + "`";
  if (!definition.UpgradeFlags.empty()) upgrade += ", when stored";
  return "| `" + definition.TagIdentifier + "` | " + where + " | " +
         (definition.TakesQualifier() ? "yes" : "") + " | " +
         (definition.IsDescription ? "description" : "kept") + " | " + wraps[definition.WrapType] +
         " | " + upgrade + " |";
}

TEST(BuiltinTags, AreListedInTheirPage) {
  std::ifstream file(test::SourceRoot() + "/docs/tags.md");
  std::stringstream page;
  page << file.rdbuf();
  std::size_t rows = 0;  // of six columns; the page has other tables
  std::istringstream lines(page.str());
  for (std::string line; std::getline(lines, line);)
    rows += line.starts_with("| `##") && std::count(line.begin(), line.end(), '|') == 7;
  EXPECT_EQ(rows, BuiltinTagDefinitions().Count());
  for (const TaggedCommentDef& definition : BuiltinTagDefinitions())
    EXPECT_NE(page.str().find("\n" + PageRow(definition) + "\n"), std::string::npos)
        << PageRow(definition);
}

}  // namespace
}  // namespace vendrel
