#pragma once
// Tables as people and programs take them: text, CSV, JSON lines or a page of its own.

#include <CLI/CLI.hpp>
#include <ostream>
#include <string_view>
#include <vector>

#include "cli/Options.h"
#include "survey/Table.h"

namespace vendrel::cli {

enum class TableForm { Text, Csv, Json, Html };

/// The form that the command line asks for.
struct TableForms {
  bool Csv = false, Json = false, Html = false;

  TableForm Chosen() const {
    if (Json) return TableForm::Json;
    if (Csv) return TableForm::Csv;
    return Html ? TableForm::Html : TableForm::Text;
  }
};

/// Adds --csv, --json and --html, of which one may be given.
void AddTableForms(CLI::App& command, TableForms& forms);

/// The folder of this machine from which a table shows paths: that of --root, else, for people,
/// where one stands; empty for whole paths, which programs are told.
std::string FolderSeenFrom(const CommonOptions& options, bool isJson);

struct TableStyle {
  /// As the first line of JSON tells it.
  std::string_view Command;
  /// Of the page.
  std::string_view Title;
  TableForm Form = TableForm::Text;
  /// Every row, where people else are shown the largest ones of long tables.
  bool All = false;
};

/// Writes all tables that have rows.
void WriteTables(std::ostream& out, const std::vector<Table>& tables, const TableStyle& style,
                 const CommonOptions& options);

}  // namespace vendrel::cli
