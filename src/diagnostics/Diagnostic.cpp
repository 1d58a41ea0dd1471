#include "diagnostics/Diagnostic.h"

#include <algorithm>

#include "core/MessageService.h"
#include "core/Workspace.h"

namespace vendrel {
namespace {

struct Entry {
  std::string_view Code;
  Severity Level;
  std::string_view Text;
};

constexpr Entry kEntries[] = {
#define VENDREL_ENTRY(id, code, severity, text) {code, Severity::severity, text},
    VENDREL_DIAGNOSTICS(VENDREL_ENTRY)
#undef VENDREL_ENTRY
};

const Entry& EntryOf(DiagnosticCode code) { return kEntries[static_cast<std::size_t>(code)]; }

// The innermost scope of a workspace.
struct OpenScope {
  const DiagnosticScope* Innermost = nullptr;
};

// Puts the arguments in the place of their marks; the one that is a path is kept apart too.
Diagnostic Filled(DiagnosticCode code, std::initializer_list<std::string_view> arguments) {
  Diagnostic item{code, {}, 0, {}};
  const std::string_view text = EntryOf(code).Text;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isPath = text.substr(i).starts_with("%p");
    const std::size_t at = i + (isPath ? 2 : 1);
    const bool marker = text[i] == '%' && at < text.size() && text[at] >= '1' &&
                        text[at] < static_cast<char>('1' + arguments.size());
    if (!marker) {
      item.Text += text[i];
      continue;
    }
    const std::string_view argument = *(arguments.begin() + (text[at] - '1'));
    item.Text += argument;
    if (isPath) item.Path = argument;
    i = at;
  }
  return item;
}

}  // namespace

std::string_view CodeName(DiagnosticCode code) { return EntryOf(code).Code; }
Severity SeverityOf(DiagnosticCode code) { return EntryOf(code).Level; }

std::string_view SeverityName(Severity severity) {
  switch (severity) {
    case Severity::Note: return "note";
    case Severity::Warning: return "warning";
    case Severity::Error: break;
  }
  return "error";
}

std::size_t Diagnostics::CountOf(DiagnosticCode code) const {
  return static_cast<std::size_t>(std::count_if(
      mItems.begin(), mItems.end(), [&](const Diagnostic& item) { return item.Code == code; }));
}

DiagnosticScope::DiagnosticScope(Diagnostics* list, std::string file, const std::int32_t* line)
    : mList(list),
      mFile(std::move(file)),
      mLine(line),
      mInnermost(InUse<OpenScope>().Innermost),
      mOuter(mInnermost) {
  mInnermost = this;
}

DiagnosticScope::~DiagnosticScope() { mInnermost = mOuter; }

const DiagnosticScope* DiagnosticScope::Current() { return InUse<OpenScope>().Innermost; }

std::int32_t LineReached() {
  const DiagnosticScope* scope = DiagnosticScope::Current();
  return scope ? scope->Line() : 0;
}

void Report(DiagnosticCode code, std::initializer_list<std::string_view> arguments) {
  const DiagnosticScope* scope = DiagnosticScope::Current();
  if (scope) ReportAt(code, scope->File(), scope->Line(), arguments);
}

void ReportAt(DiagnosticCode code, std::string_view file, std::int32_t line,
              std::initializer_list<std::string_view> arguments) {
  const DiagnosticScope* scope = DiagnosticScope::Current();
  if (!scope || !scope->List()) return;
  Diagnostic item = Filled(code, arguments);
  item.File = file;
  item.Line = line;
  scope->List()->Add(std::move(item));
}

void ReportBox(DiagnosticCode code, std::initializer_list<std::string_view> arguments,
               std::string_view boxText, std::string_view caption, int style) {
  Report(code, arguments);
  if (!State().Silent) MessageService::Current().Show(boxText, caption, style);
}

}  // namespace vendrel
