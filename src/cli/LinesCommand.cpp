#include <memory>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/ProjectSettings.h"
#include "cli/Report.h"
#include "cli/Results.h"
#include "cli/Session.h"
#include "cli/ShownText.h"
#include "core/Workspace.h"
#include "output/Dump.h"
#include "services/SourceText.h"
#include "text/CodeLine.h"

namespace vendrel::cli {
namespace {

struct LinesArguments {
  CommonOptions Common;
  Inputs Files;
  bool DotNet = false;
  bool Json = false;
};

// A line of the file, classified by itself, or why it could not be.
struct ClassifiedLine {
  CodeLine Record;
  std::string Failure;
};

ClassifiedLine Classify(std::string_view text, LanguageVersionEnum language,
                        const ReadingRules& reading) {
  ClassifiedLine line;
  try {
    line.Record = InitialiseCodeLine(text, language, reading);
  } catch (const VendrelError& error) {
    line.Record.Text = text;
    line.Failure = ReasonOf(error);
  }
  return line;
}

void WriteAsJson(JsonLines& json, const ClassifiedLine& line, const std::string& file,
                 std::int32_t number) {
  json.Begin();
  json.Place(file, number, 1);
  DumpLineMembers(json.Writer(), line.Record);
  json.Number("CurrentLineNumber", State().CurrentLineNumber);
  if (!line.Failure.empty()) json.Text("Failure", line.Failure);
  json.End();
}

void AppendAsText(std::string& out, const ClassifiedLine& line, const std::string& place) {
  std::string type(line.Failure.empty() ? LineTypeName(line.Record.LineType) : "?");
  if (line.Record.Continued) type += " continued";
  if (line.Record.MoreLines) type += " more";
  type.resize(std::max<std::size_t>(type.size(), 22), ' ');
  out.append(place).append(": ").append(type).append("  ").append(line.Record.Text);
  if (!line.Failure.empty()) out.append("  (").append(Shown(line.Failure)).append(")");
  out += '\n';
}

// Files one after the other.
class LinesWriter {
 public:
  LinesWriter(std::ostream& out, const LinesArguments& arguments)
      : mOut(out), mArguments(arguments), mJson(out, "lines", arguments.Common, arguments.Json) {}
  void Write(const SourceText& source, const std::string& windowsPath) {
    VBProject settings;
    ApplyToProject(mArguments.Common, settings);
    const auto language = mArguments.DotNet ? lvVisualBasicDotNet : lvVisualBasic5or6;
    std::string_view rest = source.Text;
    std::string text;
    for (std::int32_t number = 1; !rest.empty(); ++number) {
      const ClassifiedLine line = Classify(TakeLine(rest), language, settings.Reading);
      if (mArguments.Json) {
        WriteAsJson(mJson, line, windowsPath, number);
        continue;
      }
      text.clear();
      AppendAsText(text, line, Shown(mPaths.Place(windowsPath, number)));
      mOut << text;
    }
  }

 private:
  std::ostream& mOut;
  const LinesArguments& mArguments;
  ShownPaths mPaths;
  JsonLines mJson;
};

void WriteFile(LinesWriter& writer, const std::string& path, const CommonOptions& options) {
  ApplyToProcess(options);
  const FileSystemObject file(AbsolutePath(path));
  if (file.IsFolder())
    throw ToolError(exFailed, path + ": a folder has no lines; name one of its files");
  if (!file.Exists()) RefuseInput(path, InputKind::Missing);
  std::string bytes = ReadByOptions(file.NativePath(), options);
  writer.Write(*SourceText::Decode(std::move(bytes), FileOptions::Current().Page()),
               file.FullPath());
}

int RunLines(const LinesArguments& arguments, const Streams& streams) {
  int code = exDone;
  WriteResult(arguments.Common, streams, arguments.Files, [&](std::ostream& out) {
    LinesWriter writer(out, arguments);
    code = ForEachInput(arguments.Files, arguments.Common, streams, [&](const std::string& path) {
      WriteFile(writer, path, arguments.Common);
      return exDone;
    });
  });
  return code;
}

}  // namespace

void AddLinesCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("lines", "Each physical line, classified by itself");
  const auto arguments = std::make_shared<LinesArguments>();
  AddInputs(*command, arguments->Files);
  command->add_flag("--dotnet", arguments->DotNet, "By the rules of VB.NET");
  command->add_flag("--json", arguments->Json, "One JSON object a line");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunLines(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
