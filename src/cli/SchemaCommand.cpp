#include <algorithm>
#include <array>
#include <memory>
#include <span>

#include "cli/Commands.h"
#include "cli/JsonLines.h"
#include "cli/ProjectCounts.h"
#include "cli/Results.h"
#include "output/Dump.h"
#include "output/Schema.h"
#include "survey/ApiReport.h"
#include "survey/Assessment.h"
#include "survey/Inventory.h"

namespace vendrel::cli {
namespace {

using Json = nlohmann::ordered_json;

enum class MemberType { mtText, mtNumber, mtTruth, mtTexts, mtTextOrNull, mtPlace, mtParts };

// A member of an object of a list.
struct RecordMember {
  const char* Name;
  MemberType Type = MemberType::mtText;
  bool Optional = false;
};

using enum MemberType;

constexpr RecordMember kFile{"File"}, kLine{"Line", mtNumber}, kColumn{"Column", mtNumber};
constexpr RecordMember kUnique{"UniqueName"}, kQualified{"QualifiedName"};

constexpr RecordMember kHeaderRecord[] = {{"Command"}, {"FormatVersion", mtNumber}, {"Tool"}};
constexpr RecordMember kNamesRecord[] = {
    kUnique, kQualified, {"Kind"}, kFile, kLine, kColumn, {"Remark", mtText, true}};
constexpr RecordMember kMembersRecord[] = {
    {"Name"},   {"Kind"},      kUnique,
    kQualified, {"Signature"}, kFile,
    kLine,      kColumn,       {"Description", mtText, true}};
constexpr RecordMember kResolvedRecord[] = {{"TypeClass"}, kUnique, kQualified,
                                            kFile,         kLine,   kColumn};
constexpr RecordMember kHelpIDsRecord[] = {
    {"HelpContextID", mtNumber}, kUnique, kQualified, kFile, kLine, kColumn};
constexpr RecordMember kCommentsRecord[] = {{"TagIdentifier"},
                                            {"Qualifier"},
                                            {"Text"},
                                            kFile,
                                            kLine,
                                            kColumn,
                                            {"CodeElement", mtTextOrNull}};
constexpr RecordMember kTagsRecord[] = {{"TagIdentifier"},
                                        {"ElementType", mtNumber},
                                        {"Scope"},
                                        {"IsDescription", mtTruth},
                                        {"WrapType", mtNumber},
                                        {"KeepSeparateInBuffer", mtTruth},
                                        {"UpgradeTo"},
                                        {"UpgradeFlags"}};
constexpr RecordMember kDiagnosticsRecord[] = {
    kFile, kLine, kColumn, {"Severity"}, {"Code"}, {"Text"}, {"ExitCode", mtNumber, true}};
constexpr RecordMember kGraphNodeRecord[] = {{"Record"}, {"Label"}, {"Kind"}, {"Project"},
                                             kFile,      kLine,     kColumn};
constexpr RecordMember kGraphEdgeRecord[] = {
    {"Record"}, {"From"}, {"To"}, {"Relation"}, {"Count", mtNumber}};
constexpr RecordMember kChangesRecord[] = {{"Change"},
                                           {"Kind"},
                                           {"Class"},
                                           {"Element"},
                                           {"PlaceBefore", mtPlace},
                                           {"PlaceAfter", mtPlace},
                                           {"Parts", mtParts}};
constexpr RecordMember kBytesRecord[] = {{"Change"}, kFile, kLine, kColumn, {"Text"}};
constexpr RecordMember kLinesRecord[] = {kFile,
                                         kLine,
                                         kColumn,
                                         {"LineType", mtNumber},
                                         {"LineTypeName"},
                                         {"Continued", mtTruth},
                                         {"Continuation", mtTruth},
                                         {"Text"},
                                         {"StatementPart"},
                                         {"CommentPart"},
                                         {"LineID", mtNumber},
                                         {"MoreLines", mtTruth},
                                         {"Remainder"},
                                         {"NotInSource", mtTruth},
                                         {"EventIndex", mtNumber},
                                         {"CurrentLineNumber", mtNumber},
                                         {"Failure", mtText, true}};
constexpr RecordMember kAssemblyRecord[] = {{"Name"},
                                            kFile,
                                            kLine,
                                            kColumn,
                                            {"Kind", mtText, true},
                                            {"Access", mtText, true},
                                            {"In", mtText, true},
                                            {"IsStatic", mtTruth, true},
                                            {"IsVirtual", mtTruth, true},
                                            {"IsAbstract", mtTruth, true},
                                            {"IsSealed", mtTruth, true},
                                            {"IsExplicit", mtTruth, true},
                                            {"IsExtension", mtTruth, true},
                                            {"IsHidden", mtTruth, true},
                                            {"Type", mtText, true},
                                            {"Parameters", mtTexts, true},
                                            {"Implements", mtTexts, true},
                                            {"Value", mtText, true},
                                            {"Obsolete", mtText, true},
                                            {"Damage", mtText, true}};

constexpr RecordMember kCallsRecord[] = {{"Caller"},
                                         {"Callee"},
                                         {"Kind"},
                                         {"Sure", mtTruth},
                                         {"Count", mtNumber},
                                         kFile,
                                         kLine,
                                         kColumn,
                                         {"Direction", mtText, true},
                                         {"Depth", mtNumber, true},
                                         {"Repeated", mtTruth, true}};
constexpr RecordMember kCallFanRecord[] = {
    kQualified, {"FanIn", mtNumber}, {"FanOut", mtNumber}, kFile, kLine, kColumn};
constexpr RecordMember kUnusedRecord[] = {
    kQualified,           {"Kind"}, {"Reason"}, {"Sureness"}, {"Text"}, {"Doubt", mtText, true},
    {"By", mtText, true}, kFile,    kLine,      kColumn};
constexpr RecordMember kUsesRecord[] = {kFile,
                                        kLine,
                                        kColumn,
                                        {"EndColumn", mtNumber},
                                        {"Name"},
                                        {"Kind"},
                                        {"Answer"},
                                        {"Meaning"},
                                        {"Accessor", mtText, true},
                                        {"Reads", mtTruth},
                                        {"Writes", mtTruth},
                                        {"Secondary", mtTruth},
                                        {"InFalseBranch", mtTruth},
                                        {"Holder"},
                                        {"StatementLine", mtNumber},
                                        {"Statement"},
                                        {"CandidateCount", mtNumber, true},
                                        {"Candidates", mtTexts, true}};
constexpr RecordMember kUseCountRecord[] = {{"Answer"}, {"Count", mtNumber}};

Json MemberSchema(MemberType type) {
  const Json text{{"type", "string"}}, null{{"type", "null"}};
  switch (type) {
    case mtText: return text;
    case mtNumber: return {{"type", "integer"}};
    case mtTruth: return {{"type", "boolean"}};
    case mtTexts: return {{"type", "array"}, {"items", text}};
    case mtTextOrNull: return {{"type", Json::array({"string", "null"})}};
    case mtPlace: return {{"anyOf", Json::array({Json{{"$ref", "#/$defs/Place"}}, null})}};
    case mtParts: return {{"type", "array"}, {"items", {{"$ref", "#/$defs/Part"}}}};
  }
  return Json::object();
}

Json ObjectOf(std::span<const RecordMember> members) {
  Json properties = Json::object(), required = Json::array();
  for (const RecordMember& member : members) {
    properties[member.Name] = MemberSchema(member.Type);
    if (!member.Optional) required.push_back(member.Name);
  }
  return {{"type", "object"},
          {"properties", std::move(properties)},
          {"required", std::move(required)},
          {"additionalProperties", false}};
}

Json CountsSchema() {
  Json properties, required = Json::array();
  for (const std::string& name : ProjectCounts::Names()) {
    properties[name] = MemberSchema(mtNumber);
    required.push_back(name);
  }
  return {{"type", "object"},
          {"properties", std::move(properties)},
          {"required", std::move(required)},
          {"additionalProperties", false}};
}

// Rows of tables, of which empty ones tell all columns.
Json TableRows(const std::vector<Table>& tables) {
  Json rows = Json::array();
  for (const Table& table : tables) {
    Json properties{{"Record", {{"const", std::string(table.Row)}}}}, required = {"Record"};
    for (const std::string_view column : table.Columns) {
      properties[std::string(column)] = {{"type", Json::array({"string", "integer", "boolean"})}};
      required.push_back(std::string(column));
    }
    rows.push_back({{"type", "object"},
                    {"properties", std::move(properties)},
                    {"required", std::move(required)},
                    {"additionalProperties", false}});
  }
  return {{"anyOf", std::move(rows)}};
}

Json InventoryRows() {
  Inventory empty;
  empty.FindsNearDuplicates = true;
  std::vector<Table> tables = empty.Tables();
  empty.CountsUses = true;
  for (Table& table : empty.Tables()) tables.push_back(std::move(table));
  return TableRows(tables);
}

// What the objects of a command are: names of definitions.
struct CommandSchema {
  const char* Command;
  const char* What;
  std::vector<const char*> Objects;
  bool IsList = true;
};

const std::vector<CommandSchema>& AllCommands() {
  static const std::vector<CommandSchema> all{
      {"assess", "a row of a table a line", {"AssessmentRow"}},
      {"assembly", "a type or member a line", {"AssemblyEntry"}},
      {"calls", "a call a line, or a procedure under --fan", {"Call", "CallFan"}},
      {"check", "a diagnostic a line, the counts last", {"Diagnostic", "Counts"}},
      {"comments", "a tagged comment a line", {"Comment"}},
      {"controls", "a tree of controls a line", {"VBControl"}},
      {"diagnostics", "what is told under --diagnostics json, an object a line", {"Diagnostic"}},
      {"diff", "a difference a line; with --api rows of tables", {"Change", "ApiRow"}},
      {"dump",
       "one document for a project, module or group, a project a line for a folder",
       {"VBProject", "VBProjectGroup"}},
      {"find", "an element a line", {"Element"}},
      {"graph", "a node or an edge a line", {"GraphNode", "GraphEdge"}},
      {"help-ids", "a help context ID a line", {"HelpID"}},
      {"inventory", "a row of a table a line", {"InventoryRow"}},
      {"lines", "a line of source a line", {"SourceLine"}},
      {"members", "a member a line", {"Member"}},
      {"names", "a name a line", {"Name"}},
      {"tags", "a tag a line", {"Tag"}},
      {"resolve", "where the type is declared", {"Resolution"}},
      {"roundtrip", "a difference a line", {"Change", "BytesChange"}},
      {"typelib", "one document, by the names of the reading service", {"TypeLibrary"}, false},
      {"unused", "what nobody uses, a line each", {"Unused"}},
      {"uses", "a use a line, or a count under --summary", {"Use", "UseCount"}},
  };
  return all;
}

Json AllDefinitions() {
  Json definitions = SchemaOfClasses();
  Json elements = Json::array();
  for (const auto& [name, schema] : definitions.items())
    if (schema["properties"].contains("Class")) elements.push_back({{"$ref", "#/$defs/" + name}});
  definitions["Element"] = {{"anyOf", std::move(elements)}};
  definitions["Header"] = ObjectOf(kHeaderRecord);
  definitions["Name"] = ObjectOf(kNamesRecord);
  definitions["Member"] = ObjectOf(kMembersRecord);
  definitions["Resolution"] = ObjectOf(kResolvedRecord);
  definitions["HelpID"] = ObjectOf(kHelpIDsRecord);
  definitions["Tag"] = ObjectOf(kTagsRecord);
  definitions["Comment"] = ObjectOf(kCommentsRecord);
  definitions["Diagnostic"] = ObjectOf(kDiagnosticsRecord);
  definitions["Counts"] = CountsSchema();
  definitions["Place"] = ObjectOf(std::array{kFile, kLine, kColumn});
  definitions["Part"] = ObjectOf(std::array<RecordMember, 6>{{{"Change"},
                                                              {"Kind", mtText, true},
                                                              {"Element", mtText, true},
                                                              {"Property", mtText, true},
                                                              {"Before", mtText, true},
                                                              {"After", mtText, true}}});
  definitions["Change"] = ObjectOf(kChangesRecord);
  definitions["BytesChange"] = ObjectOf(kBytesRecord);
  definitions["SourceLine"] = ObjectOf(kLinesRecord);
  definitions["AssemblyEntry"] = ObjectOf(kAssemblyRecord);
  definitions["Call"] = ObjectOf(kCallsRecord);
  definitions["CallFan"] = ObjectOf(kCallFanRecord);
  definitions["Unused"] = ObjectOf(kUnusedRecord);
  definitions["Use"] = ObjectOf(kUsesRecord);
  definitions["UseCount"] = ObjectOf(kUseCountRecord);
  definitions["GraphNode"] = ObjectOf(kGraphNodeRecord);
  definitions["GraphEdge"] = ObjectOf(kGraphEdgeRecord);
  definitions["ApiRow"] = TableRows(ApiReport().Tables());
  definitions["AssessmentRow"] = TableRows(Assessment().Tables());
  definitions["InventoryRow"] = InventoryRows();
  definitions["TypeLibrary"] = {
      {"type", "object"},
      {"required", Json::array({"FormatVersion", "Tool", "Name", "TypeInfos"})}};
  return definitions;
}

// Only the definitions that `wanted` leads to.
Json Reachable(const Json& all, const Json& wanted) {
  Json reached = Json::object();
  std::vector<Json> open{wanted};
  while (!open.empty()) {
    const Json next = std::move(open.back());
    open.pop_back();
    const Json flat = next.flatten();
    for (const auto& [path, value] : flat.items()) {
      if (!path.ends_with("/$ref")) continue;
      const std::string name = value.get<std::string>().substr(8);
      if (reached.contains(name)) continue;
      reached[name] = all[name];
      open.push_back(all[name]);
    }
  }
  return reached;
}

Json Choice(const CommandSchema& command) {
  Json choice = Json::array();
  if (command.IsList && std::string_view(command.Command) != "diagnostics")
    choice.push_back({{"$ref", "#/$defs/Header"}});
  for (const char* object : command.Objects)
    choice.push_back({{"$ref", std::string("#/$defs/") + object}});
  return choice;
}

Json SchemaFor(const std::string& command) {
  Json choice = Json::array();
  std::string what = "whatever the tool writes as JSON";
  for (const CommandSchema& one : AllCommands()) {
    if (!command.empty() && command != one.Command) continue;
    for (const Json& entry : Choice(one))
      if (std::find(choice.begin(), choice.end(), entry) == choice.end()) choice.push_back(entry);
    if (!command.empty()) what = one.What;
  }
  Json schema{{"$schema", "https://json-schema.org/draft/2020-12/schema"},
              {"title", command.empty() ? "vendrelmodel" : "vendrelmodel " + command},
              {"description", what},
              {"version", kJsonFormat},
              {"anyOf", std::move(choice)}};
  schema["$defs"] = Reachable(AllDefinitions(), schema);
  return schema;
}

struct SchemaArguments {
  CommonOptions Common;
  std::string Command;
};

int RunSchema(const SchemaArguments& arguments, const Streams& streams) {
  WriteResult(arguments.Common, streams, std::string(),
              [&](std::ostream& out) { out << SchemaFor(arguments.Command).dump(1) << '\n'; });
  return exDone;
}

}  // namespace

void AddSchemaCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("schema", "The JSON Schema of what a command writes as JSON, or of all");
  const auto arguments = std::make_shared<SchemaArguments>();
  std::vector<std::string> commands;
  for (const CommandSchema& one : AllCommands()) commands.emplace_back(one.Command);
  command->add_option("command", arguments->Command, "A command, or diagnostics")
      ->check(CLI::IsMember(commands));
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunSchema(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
