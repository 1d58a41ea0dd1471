#include "output/Dump.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "model/PropertyGroup.h"
#include "output/Json.h"
#include "project/VBProjectGroup.h"

namespace vendrel {
namespace {

using nlohmann::json;

template <typename Class>
json DumpOf(const Class& element, const DumpOptions& options = {}) {
  std::ostringstream out;
  Dump(out, Describe(element), options);
  return json::parse(out.str());
}

TEST(Describe, GivesEveryClassDistinctNamesAndReaders) {
  std::set<std::string_view> classes;
  for (const ClassDescription* description : AllClasses()) {
    EXPECT_TRUE(classes.insert(description->Name).second) << description->Name;
    std::set<std::string_view> names;
    for (const PropertyDescription& property : description->Properties) {
      EXPECT_TRUE(names.insert(property.Name).second) << description->Name << "." << property.Name;
      EXPECT_TRUE(property.Read ? !property.Count : property.Count && property.At);
      // A collection that is not marked as one would be owned twice.
      const bool owns = property.Count != nullptr;
      EXPECT_EQ(owns, property.Kind == PropertyKind::Children)
          << description->Name << "." << property.Name;
    }
  }
}

const PropertyDescription& PropertyOf(const ClassDescription& type, std::string_view name) {
  const auto all = type.AllProperties;
  const auto found = std::find_if(all.begin(), all.end(), [&](auto& p) { return p.Name == name; });
  EXPECT_NE(found, all.end()) << name;
  return *found;
}

// Sets each property that can be set to something else, and reads it back.
template <typename Class>
void SetAndReadBack() {
  Class object;
  const ClassDescription& type = DescriptionOf<Class>();
  for (const PropertyDescription& property : type.AllProperties) {
    if (!property.Write || property.Shape == PropertyShape::Link) continue;
    if (property.Name == "AutoGatherComments") continue;  // assigning is ignored
    const std::string_view text = property.Shape == PropertyShape::Path ? "Z:\\a\\b.txt" : "ab c";
    const std::vector<std::string> texts{"a", "b"};
    PropertyValue given, after;
    property.Read(&object, given);
    given.Truth = !given.Truth;
    given.Number = property.Names.empty() ? 7 : property.Names.back().Value;
    given.Text = text;
    given.Texts = texts;
    SCOPED_TRACE(std::string(type.Name) + "." + std::string(property.Name));
    EXPECT_TRUE(property.Write(&object, given));
    property.Read(&object, after);
    switch (property.Shape) {
      case PropertyShape::Number: EXPECT_EQ(after.Number, given.Number); break;
      case PropertyShape::Truth: EXPECT_EQ(after.Truth, given.Truth); break;
      case PropertyShape::Texts: EXPECT_EQ(after.Texts.size(), texts.size()); break;
      default: EXPECT_EQ(after.Text, text);
    }
  }
}

TEST(Describe, WhatCanBeSetReadsBack) {
  SetAndReadBack<Block>();
  SetAndReadBack<CompilerConstant>();
  SetAndReadBack<Component>();
  SetAndReadBack<DeclareDeclaration>();
  SetAndReadBack<EventDeclaration>();
  SetAndReadBack<Example>();
  SetAndReadBack<Parameter>();
  SetAndReadBack<Reference>();
  SetAndReadBack<TaggedComment>();
  SetAndReadBack<VBControl>();
  SetAndReadBack<VBProject>();
  SetAndReadBack<VBProjectGroup>();
  SetAndReadBack<Variable>();
}

TEST(Describe, RefusesWhatDoesNotFit) {
  Block block;
  Variable variable;
  PropertyValue value;
  const auto write = [&](std::string_view name) {
    return PropertyOf(DescriptionOf<Block>(), name).Write(&block, value);
  };
  value.Number = btPropertyLet;
  EXPECT_TRUE(write("BlockType"));
  value.Number = 99;
  EXPECT_FALSE(write("BlockType"));
  EXPECT_EQ(block.BlockType(), btPropertyLet);
  value.Number = std::int64_t{1} << 40;
  EXPECT_FALSE(write("HelpContextID"));
  value.Link = &variable;
  EXPECT_TRUE(write("EventSource"));
  EXPECT_EQ(block.EventSource.Get(), &variable);
  EXPECT_FALSE(write("Component"));
  EXPECT_EQ(block.Component.Get(), nullptr);
  value.Link = nullptr;
  EXPECT_TRUE(write("EventSource"));
  EXPECT_EQ(block.EventSource.Get(), nullptr);
}

TEST(Describe, TellsTypesAndWhatCannotBeSet) {
  const ClassDescription& module = DescriptionOf<Component>();
  EXPECT_EQ(PropertyOf(module, "FileType").Names[3].Name, "ftForm");
  EXPECT_TRUE(PropertyOf(module, "OptionBase").Names.empty());
  EXPECT_EQ(PropertyOf(module, "Blocks").ElementClass, &DescriptionOf<Block>);
  EXPECT_EQ(PropertyOf(module, "VBControl").ElementClass, &DescriptionOf<VBControl>);
  EXPECT_EQ(PropertyOf(module, "CurrentBlock").ElementClass, &DescriptionOf<Block>);
  EXPECT_EQ(PropertyOf(module, "LastElement").ElementClass, nullptr);
  for (const char* name : {"Blocks", "VBControl", "QualifiedName", "AccessType"})
    EXPECT_EQ(PropertyOf(module, name).Write, nullptr) << name;
}

TEST(Dump, HasEveryPropertyOfTheTable) {
  const json dump = DumpOf(Block(), {.Lines = true});
  const ClassDescription& description = *Describe(Block()).Class;
  EXPECT_EQ(dump["Class"], "Block");
  for (std::size_t i = 0; i < description.AllProperties.size(); ++i) {
    const PropertyDescription& property = description.AllProperties[i];
    const bool isLeftOut = !WhyNotDumped(description, i).empty();
    const bool isShown = dump.contains(std::string(property.Name));
    const bool mayBeEither = IsHidden(description, i) || property.IsRare;
    EXPECT_TRUE(isLeftOut ? !isShown : isShown || mayBeEither) << property.Name;
    EXPECT_EQ(dump.contains(std::string(property.Name) + "Name"),
              !property.Names.empty() && isShown);
  }
}

TEST(Dump, ShowsValuesAsTheLibraryHoldsThem) {
  Component module;
  module.Name = "Счёт \"x\"\t\x01";
  module.FileType = ftForm;
  module.IgnoreReferences = {"a", "b"};
  module.EventDeclarations.Add(std::make_shared<EventDeclaration>());
  module.VBControl = std::make_shared<VBControl>();
  module.VBControl->Name = "frmMain";
  const json dump = DumpOf(module);
  EXPECT_EQ(dump["Name"], "Счёт \"x\"\t\x01");
  EXPECT_EQ(dump["FileType"], 3);
  EXPECT_EQ(dump["IsNew"], false);
  EXPECT_EQ(dump["IgnoreReferences"], json({"a", "b"}));
  EXPECT_EQ(dump["EventDeclarations"][0]["Class"], "EventDeclaration");
  EXPECT_EQ(dump["VBControl"]["Name"], "frmMain");
  EXPECT_FALSE(dump["Blocks"].is_null());
  EXPECT_TRUE(DumpOf(Component())["VBControl"].is_null());
}

TEST(Dump, ShowsLinksByQualifiedNameAndAbsentOnesAsNull) {
  VBControl control;
  control.Name = "cmdOK";
  Block block;
  EXPECT_TRUE(DumpOf(block)["EventSource"].is_null());
  block.EventSource = &control;
  EXPECT_EQ(DumpOf(block)["EventSource"], control.QualifiedName());
}

TEST(Dump, MakesNoCollectionAndLoadsNoModule) {
  VBProject project;
  const auto module = std::make_shared<Component>();
  module->FileName.SetFullPath("Z:\\no\\such\\file.bas");
  project.Components.Add(module, "m");
  const auto block = std::make_shared<Block>();
  module->Blocks.Add(block);
  const json dump = DumpOf(project, {.Lines = true});
  EXPECT_EQ(dump["Components"].size(), 1u);
  EXPECT_EQ(dump["Components"][0]["Blocks"][0]["Parameters"], json::array());
  EXPECT_EQ(block->Parameters.IfAny(), nullptr);
  EXPECT_EQ(block->CodeLines.IfAny(), nullptr);
  EXPECT_EQ(module->LoadState, lsNotLoaded);
  EXPECT_EQ(project.Diagnostics.Count(), 0u);
}

TEST(Dump, ShowsCodeLinesOnlyWhereAsked) {
  Block block;
  block.CodeLines->Add(InitialiseCodeLine("x = 1 ' why", lvVisualBasic5or6));
  EXPECT_FALSE(DumpOf(block).contains("CodeLines"));
  const json line = DumpOf(block, {.Lines = true})["CodeLines"][0];
  EXPECT_EQ(line["LineType"], 16);
  EXPECT_EQ(line["LineTypeName"], "OTHER");
  EXPECT_EQ(line["Text"], "x = 1 ' why");
  EXPECT_EQ(line["CommentPart"], "why");
  block.UnloadSourceCode();
  EXPECT_EQ(DumpOf(block, {.Lines = true})["CodeLines"], json::array());
}

TEST(Dump, LeavesOutWhatDiffersFromLoadToLoad) {
  VBProject project;
  project.FileName.SetFullPath("Z:\\home\\me\\Ledger\\Ledger.vbp");
  const auto reference = std::make_shared<Reference>();
  reference->SetSourceLine(7);
  project.References.Add(reference);
  EXPECT_EQ(DumpOf(project)["References"][0]["SourceLine"], 7);

  const json comparable = DumpOf(project, {.Identity = false, .SourceLines = false});
  for (const char* name : {"Key", "FileName", "OutputFileName"})
    EXPECT_FALSE(comparable.contains(name)) << name;
  EXPECT_FALSE(comparable["References"][0].contains("SourceLine"));
  EXPECT_TRUE(comparable.contains("ProjectName"));

  const auto pathUnder = [&](const char* root) {
    return DumpOf(project, {.Root = root})["FileName"].get<std::string>();
  };
  EXPECT_EQ(pathUnder("Z:\\HOME\\me"), "Z:\\root\\Ledger\\Ledger.vbp");
  EXPECT_EQ(pathUnder("Z:\\home\\m"), "Z:\\home\\me\\Ledger\\Ledger.vbp");

  const json brief = DumpOf(project, {.Empty = false});
  EXPECT_FALSE(brief.contains("Startup"));
  EXPECT_FALSE(brief.contains("Examples"));
  EXPECT_TRUE(brief.contains("References"));
}

TEST(Dump, GoesAsDeepAsTheInput) {
  constexpr std::size_t depth = 20000;
  VBControl root;
  VBControl* innermost = &root;
  for (std::size_t i = 0; i < depth; ++i) {
    const auto child = std::make_shared<VBControl>();
    innermost->VBControls.Add(child);
    innermost = child.get();
  }
  std::ostringstream out;
  Dump(out, Describe(root), {.Empty = false});
  const std::string text = out.str();
  std::size_t count = 0;
  for (std::size_t at = text.find("\"Class\""); at != std::string::npos;
       at = text.find("\"Class\"", at + 1))
    ++count;
  EXPECT_EQ(count, depth + 1);
  EXPECT_TRUE(json::accept(text));
}

TEST(JsonString, IsValidWhateverComesIn) {
  const struct {
    std::string Text;
    std::string Json;
  } cases[] = {
      {"", R"("")"},
      {"a\"b\\c/", R"("a\"b\\c/")"},
      {std::string("\0\x1f\r\n\t\x7f", 6), "\"\\u0000\\u001f\\r\\n\\t\x7f\""},
      {"Tamaño \xF0\x9F\x98\x80", "\"Tamaño \xF0\x9F\x98\x80\""},
      {"a\xFF\"b", "\"a\xEF\xBF\xBD\\\"b\""},
      {"cut \xC3", "\"cut \xEF\xBF\xBD\""},
  };
  for (const auto& sample : cases) {
    std::string out;
    AppendJsonString(out, sample.Text);
    EXPECT_EQ(out, sample.Json);
    EXPECT_TRUE(json::accept(out)) << out;
  }
}

}  // namespace
}  // namespace vendrel
