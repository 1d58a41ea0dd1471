#include <memory>

#include "cli/Commands.h"
#include "cli/JsonLines.h"
#include "cli/Options.h"
#include "cli/Results.h"
#include "cli/ShownText.h"
#include "comments/TagDefinitions.h"

namespace vendrel::cli {
namespace {

struct TagsArguments {
  CommonOptions Common;
  bool Json = false;
};

std::string_view WrapOf(const TaggedCommentDef& tag) {
  switch (tag.WrapType) {
    case wrapSpace: return "blank";
    case wrapParagraph: return "paragraph";
    default: return "line break";
  }
}

void WriteTag(std::ostream& out, const TaggedCommentDef& tag) {
  const EnumName* element = FindName(NamesOf(ElementTypeEnum()), tag.ElementType);
  WriteRow(out, {tag.TagIdentifier, element ? element->Name : "", tag.Scope,
                 tag.IsDescription ? "description" : "kept", WrapOf(tag), tag.UpgradeTo});
}

// With the names that a file of definitions has.
void WriteTagAsJson(JsonLines& json, const TaggedCommentDef& tag) {
  json.Begin();
  json.Text("TagIdentifier", tag.TagIdentifier);
  json.Number("ElementType", tag.ElementType);
  json.Text("Scope", tag.Scope);
  json.Truth("IsDescription", tag.IsDescription);
  json.Number("WrapType", tag.WrapType);
  json.Truth("KeepSeparateInBuffer", tag.KeepSeparateInBuffer);
  json.Text("UpgradeTo", tag.UpgradeTo);
  json.Text("UpgradeFlags", tag.UpgradeFlags);
  json.End();
}

int RunTags(const TagsArguments& arguments, const Streams& streams) {
  ApplyToProcess(arguments.Common);
  WriteResult(arguments.Common, streams, std::string(), [&](std::ostream& out) {
    JsonLines json(out, "tags", arguments.Common, arguments.Json);
    for (const TaggedCommentDef& tag : TemplateObjects::Default().TaggedCommentDefs())
      if (arguments.Json)
        WriteTagAsJson(json, tag);
      else
        WriteTag(out, tag);
  });
  return exDone;
}

}  // namespace

void AddTagsCommand(CLI::App& app, Job& job) {
  auto* command =
      app.add_subcommand("tags", "The tags of comments: those built in, and those of --tags");
  const auto arguments = std::make_shared<TagsArguments>();
  command->add_flag("--json", arguments->Json,
                    "A JSON object for each, as a file of --tags has it");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunTags(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
