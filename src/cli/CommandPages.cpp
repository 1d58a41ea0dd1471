#include "cli/CommandPages.h"

#include <array>

namespace vendrel::cli {
namespace {

struct Page {
  std::string_view Command;
  std::string_view Group;
};

constexpr std::string_view kOther = "More";

// By what one wants to do; a command without a row stands under "More".
constexpr std::array kPages{
    Page{"tree", "Look at a project"},      Page{"inventory", "Look at a project"},
    Page{"check", "Look at a project"},     Page{"assess", "Look at a project"},
    Page{"names", "Find something"},        Page{"find", "Find something"},
    Page{"resolve", "Find something"},      Page{"members", "Find something"},
    Page{"uses", "Find something"},         Page{"calls", "Find something"},
    Page{"unused", "Find something"},       Page{"structure", "Show it to others"},
    Page{"graph", "Show it to others"},     Page{"html", "Show it to others"},
    Page{"site", "Show it to others"},      Page{"controls", "Show it to others"},
    Page{"comments", "Show it to others"},  Page{"diff", "Compare and change"},
    Page{"write", "Compare and change"},    Page{"roundtrip", "Compare and change"},
    Page{"help-ids", "Compare and change"}, Page{"build", "Compare and change"},
    Page{"dump", "For other programs"},     Page{"manifest", "For other programs"},
    Page{"schema", "For other programs"},   Page{"typelib", "Compiled files"},
    Page{"assembly", "Compiled files"},     Page{"assemblies", "Compiled files"},
};

struct ExampleRow {
  std::string_view Command;
  cli::Example Example;
};

// A test runs the parser over each of them.
constexpr std::array kExamples{
    ExampleRow{"tree", {"tree Ledger.vbp --depth 2", "the project and its modules"}},
    ExampleRow{"tree", {"Ledger.vbp --module modMain", "one module; tree need not be said"}},
    ExampleRow{"dump", {"dump Ledger.vbp --brief -o ledger.json", "the tree into a file"}},
    ExampleRow{"manifest", {"manifest Ledger.vbp", "what to compare two loads by"}},
    ExampleRow{"comments", {"comments Ledger.vbp --unplaced", "comments that found no element"}},
    ExampleRow{"check", {"check estate", "all projects below a folder"}},
    ExampleRow{"check", {"check Ledger.vbp --json", "for a script"}},
    ExampleRow{"lines", {"lines modMain.bas", "what each line is"}},
    ExampleRow{"evaluate", {"evaluate 'Win32 And Not DEBUG' --define DEBUG=0", "True or False"}},
    ExampleRow{"names", {"names Ledger.vbp --kind procedure", "all procedures"}},
    ExampleRow{"find", {"find Ledger.vbp Post", "by a bare name"}},
    ExampleRow{"find", {"find estate 'Ledger~*~Post*'", "by a pattern, in every project"}},
    ExampleRow{"resolve", {"resolve Ledger.vbp FirmSettings --from modMain", "as modMain sees it"}},
    ExampleRow{"controls", {"controls Ledger.vbp frmMain --properties", "one form, in full"}},
    ExampleRow{"uses", {"uses Ledger.vbp Ledger~Account~Post", "every place, and what holds it"}},
    ExampleRow{"calls", {"calls Ledger.vbp Ledger~modMain~Main --depth 2", "callers and callees"}},
    ExampleRow{"unused", {"unused Ledger.vbp --kind procedure", "what could go"}},
    ExampleRow{"graph", {"graph Ledger.vbp --level class --mermaid", "classes and who knows whom"}},
    ExampleRow{"assess", {"assess estate --places", "what stands in the way of a move"}},
    ExampleRow{"site", {"site Ledger.vbg --to ledger-site", "documentation to browse"}},
    ExampleRow{"structure", {"structure estate --dot -o estate.dot", "a graph of projects"}},
    ExampleRow{"html", {"html Ledger.vbp Account --page -o account.html", "a page to look at"}},
    ExampleRow{"members", {"members Ledger.vbp Account --kind methods", "what it offers"}},
    ExampleRow{"help-ids", {"help-ids Ledger.vbp --header", "#define lines"}},
    ExampleRow{"write", {"write Ledger.vbp --to copy --dry-run", "what would change"}},
    ExampleRow{"write", {"write Ledger.vbp --in-place --line-numbers 100:10", "with backups"}},
    ExampleRow{"typelib", {"typelib Shop.tlb", "its entries"}},
    ExampleRow{"assembly", {"assembly Shop.dll --check-docs", "names its documentation misses"}},
    ExampleRow{"assemblies",
               {"assemblies Shop.dll --xml-docs --save set.xml", "a set to come back to"}},
    ExampleRow{"diff", {"diff before/Ledger.vbp Ledger.vbp", "what became of each element"}},
    ExampleRow{"build", {"build Ledger.vbp --compiler 'wine /opt/vb/VB6.EXE'", "with its log"}},
    ExampleRow{"roundtrip", {"roundtrip estate", "what writing would change"}},
    ExampleRow{"inventory", {"inventory estate", "counts and tables"}},
    ExampleRow{"schema", {"schema find", "what its JSON looks like"}},
    ExampleRow{"tags", {"tags --tags ours.json", "the built-in ones and those of a file"}},
    ExampleRow{"completion",
               {"completion bash > ~/.local/share/bash-completion/completions/vendrelmodel",
                "for the shell of one person"}},
    ExampleRow{"manual", {"manual find", "the page of one command"}},
    ExampleRow{"manual", {"manual --html -o manual.html", "the whole manual for a browser"}},
};

}  // namespace

std::string GroupOfCommand(std::string_view command) {
  for (const Page& page : kPages)
    if (page.Command == command) return std::string(page.Group);
  return std::string(kOther);
}

std::vector<std::string> CommandGroups() {
  std::vector<std::string> groups;
  for (const Page& page : kPages)
    if (groups.empty() || groups.back() != page.Group) groups.emplace_back(page.Group);
  groups.emplace_back(kOther);
  return groups;
}

std::vector<Example> ExamplesOf(std::string_view command) {
  std::vector<Example> examples;
  for (const ExampleRow& row : kExamples)
    if (row.Command == command) examples.push_back(row.Example);
  return examples;
}

}  // namespace vendrel::cli
