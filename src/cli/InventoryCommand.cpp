#include <algorithm>
#include <filesystem>
#include <memory>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/JsonLines.h"
#include "cli/ShownText.h"
#include "cli/WrittenFiles.h"
#include "model/ModuleKinds.h"
#include "output/HtmlText.h"
#include "survey/Inventory.h"

namespace vendrel::cli {
namespace {

constexpr std::size_t kLargest = 10;

struct InventoryArguments {
  CommonOptions Common;
  Inputs Paths;
  bool Csv = false;
  bool Json = false;
  bool Html = false;
  bool NearDuplicates = false;
  bool All = false;
};

std::string TextOf(const TableValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  return std::get<bool>(value) ? "yes" : "no";
}

// The rows that people are shown: the largest ones first, and no more than they read.
std::vector<const std::vector<TableValue>*> ShownRows(const Table& table, bool all) {
  std::vector<const std::vector<TableValue>*> rows;
  for (const auto& row : table.Rows) rows.push_back(&row);
  const auto column = std::find(table.Columns.begin(), table.Columns.end(), table.LargestBy);
  if (column != table.Columns.end()) {
    const auto index = static_cast<std::size_t>(column - table.Columns.begin());
    std::stable_sort(rows.begin(), rows.end(), [&](const auto* a, const auto* b) {
      return std::get<std::int64_t>((*a)[index]) > std::get<std::int64_t>((*b)[index]);
    });
  }
  if (!all && rows.size() > kLargest && table.Rows.size() > 2 * kLargest) rows.resize(kLargest);
  return rows;
}

std::string HeadingOf(const Table& table, std::size_t shown) {
  std::string heading = std::to_string(table.Rows.size()) + " " + std::string(table.Title);
  if (shown < table.Rows.size())
    heading += table.LargestBy.empty() ? ", the first " + std::to_string(shown)
                                       : ", the " + std::to_string(shown) + " largest by " +
                                             std::string(table.LargestBy);
  return table.Row == "total" ? std::string(table.Title) : heading;
}

void WriteAsText(std::ostream& out, const std::vector<Table>& tables, bool all) {
  const char* between = "";
  for (const Table& table : tables) {
    if (table.Rows.empty()) continue;
    const auto rows = ShownRows(table, all);
    out << between << "# " << HeadingOf(table, rows.size()) << '\n';
    between = "\n";
    const char* separator = "";
    for (const std::string_view column : table.Columns) {
      out << separator << column;
      separator = "\t";
    }
    out << '\n';
    for (const auto* row : rows) {
      separator = "";
      for (const TableValue& value : *row) {
        out << separator << Shown(TextOf(value));
        separator = "\t";
      }
      out << '\n';
    }
  }
}

std::string HtmlOf(std::string_view text) {
  std::string html;
  AppendHtml(html, text);
  return html;
}

// By RFC 4180: what holds a comma, a quotation mark or a line end stands in quotation marks.
std::string CsvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + "\"";
}

// One table for all: the sort of the row first, then its columns, each table below its own names.
void WriteAsCsv(std::ostream& out, const std::vector<Table>& tables) {
  for (const Table& table : tables) {
    if (table.Rows.empty()) continue;
    out << "Record";
    for (const std::string_view column : table.Columns) out << ',' << column;
    out << "\r\n";
    for (const auto& row : table.Rows) {
      out << table.Row;
      for (const TableValue& value : row) out << ',' << CsvField(TextOf(value));
      out << "\r\n";
    }
  }
}

void WriteAsJson(std::ostream& out, const std::vector<Table>& tables,
                 const CommonOptions& options) {
  JsonLines json(out, "inventory", options, true);
  for (const Table& table : tables)
    for (const auto& row : table.Rows) {
      json.Begin();
      json.Text("Record", table.Row);
      for (std::size_t i = 0; i < row.size(); ++i) {
        if (const auto* number = std::get_if<std::int64_t>(&row[i]))
          json.Number(table.Columns[i], *number);
        else if (const auto* truth = std::get_if<bool>(&row[i]))
          json.Truth(table.Columns[i], *truth);
        else
          json.Text(table.Columns[i], std::get<std::string>(row[i]));
      }
      json.End();
    }
}

void WriteAsHtml(std::ostream& out, const std::vector<Table>& tables, bool all) {
  out << "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>Inventory</title>"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
         "'unsafe-inline'\"><style>:root{color-scheme:light dark}body{font:15px sans-serif;"
         "margin:2em}table{border-collapse:collapse}td,th{padding:.2em .8em;text-align:left;"
         "border-bottom:1px solid #8886}.n{text-align:right}</style></head><body>\n";
  for (const Table& table : tables) {
    if (table.Rows.empty()) continue;
    const auto rows = ShownRows(table, all);
    out << "<h2>" << HtmlOf(HeadingOf(table, rows.size())) << "</h2>\n<table><tr>";
    for (const std::string_view column : table.Columns) out << "<th>" << column << "</th>";
    out << "</tr>\n";
    for (const auto* row : rows) {
      out << "<tr>";
      for (const TableValue& value : *row)
        out << (std::holds_alternative<std::int64_t>(value) ? "<td class=\"n\">" : "<td>")
            << HtmlOf(TextOf(value)) << "</td>";
      out << "</tr>\n";
    }
    out << "</table>\n";
  }
  out << "</body></html>\n";
}

// Module files in and below a folder; what lies in folders of backups is none.
void AddFilesBelow(const std::string& path, Inventory& inventory) {
  if (KindOfInput(path) != InputKind::Folder) return;
  std::vector<FileSystemObject> files;
  FileSystemObject(AbsolutePath(path)).FindFiles("*", 0, files);
  for (const FileSystemObject& file : files)
    if (ModuleKindOfExtension(file.Extension()) && !IsBackupPath(file.NativePath()))
      inventory.AddFile(file);
}

// Programs are told whole paths, people those from where they stand.
std::string FolderSeenFrom(const InventoryArguments& arguments) {
  std::string root = NativeRootOf(arguments.Common);
  if (!root.empty() || arguments.Json) return root;
  return std::filesystem::current_path().string();
}

int RunInventory(const InventoryArguments& arguments, const Streams& streams) {
  int code = exDone;
  WriteResult(arguments.Common, streams, arguments.Paths, [&](std::ostream& out) {
    Inventory inventory;
    inventory.NativeRoot = FolderSeenFrom(arguments);
    inventory.FindsNearDuplicates = arguments.NearDuplicates;
    code = ForEachProject(arguments.Paths, arguments.Common, streams,
                          [&](VBProject& project) { inventory.Add(project); });
    for (const std::string& path : arguments.Paths.Paths) AddFilesBelow(path, inventory);
    const std::vector<Table> tables = inventory.Tables();
    if (arguments.Json)
      WriteAsJson(out, tables, arguments.Common);
    else if (arguments.Csv)
      WriteAsCsv(out, tables);
    else if (arguments.Html)
      WriteAsHtml(out, tables, arguments.All);
    else
      WriteAsText(out, tables, arguments.All);
  });
  return code;
}

}  // namespace

void AddInventoryCommand(CLI::App& app, Job& job) {
  auto* command = app.add_subcommand("inventory", "What there is in numbers, as tables");
  const auto arguments = std::make_shared<InventoryArguments>();
  AddInputs(*command, arguments->Paths);
  auto* form = command->add_option_group("form");
  form->add_flag("--csv", arguments->Csv, "As CSV, every row");
  form->add_flag("--json", arguments->Json, "One JSON object a line, every row");
  form->add_flag("--html", arguments->Html, "As a page");
  form->require_option(0, 1);
  command->add_flag("--near-duplicates", arguments->NearDuplicates,
                    "Modules of which four in five lines are the same, too");
  command->add_flag("--all", arguments->All, "Every row, not the largest alone");
  AddCommonOptions(*command, arguments->Common);
  command->callback([arguments, &job] {
    job.Run = [arguments, &streams = job.Streams] { return RunInventory(*arguments, streams); };
  });
}

}  // namespace vendrel::cli
