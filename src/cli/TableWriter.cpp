#include "cli/TableWriter.h"

#include <algorithm>
#include <filesystem>

#include "cli/JsonLines.h"
#include "cli/ShownText.h"
#include "output/HtmlText.h"

namespace vendrel::cli {
namespace {

constexpr std::size_t kLargest = 10;

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

// A title begins with what its rows are, in the plural.
std::string CountedTitle(std::string_view title, std::size_t rows) {
  const std::size_t word = std::min(title.find(' '), title.size());
  if (rows != 1) return std::to_string(rows).append(" ").append(title);
  return "1 " + SingularOf(title.substr(0, word)).append(title.substr(word));
}

std::string HeadingOf(const Table& table, std::size_t shown) {
  std::string heading = CountedTitle(table.Title, table.Rows.size());
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

void WriteAsJson(std::ostream& out, const std::vector<Table>& tables, std::string_view command,
                 const CommonOptions& options) {
  JsonLines json(out, command, options, true);
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

void WriteAsHtml(std::ostream& out, const std::vector<Table>& tables, std::string_view title,
                 bool all) {
  out << "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>" << HtmlOf(title)
      << "</title><meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
         "style-src "
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

}  // namespace

void AddTableForms(CLI::App& command, TableForms& forms) {
  auto* group = command.add_option_group("form");
  group->add_flag("--csv", forms.Csv, "As CSV, every row");
  group->add_flag("--json", forms.Json, "One JSON object a line, every row");
  group->add_flag("--html", forms.Html, "As a page");
  group->require_option(0, 1);
}

void WriteTables(std::ostream& out, const std::vector<Table>& tables, const TableStyle& style,
                 const CommonOptions& options) {
  switch (style.Form) {
    case TableForm::Json: return WriteAsJson(out, tables, style.Command, options);
    case TableForm::Csv: return WriteAsCsv(out, tables);
    case TableForm::Html: return WriteAsHtml(out, tables, style.Title, style.All);
    case TableForm::Text: return WriteAsText(out, tables, style.All);
  }
}

std::string FolderSeenFrom(const CommonOptions& options, bool isJson) {
  std::string root = NativeRootOf(options);
  return root.empty() && !isJson ? std::filesystem::current_path().string() : root;
}

}  // namespace vendrel::cli
