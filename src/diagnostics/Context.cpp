#include "diagnostics/Context.h"

namespace vendrel::trace {
namespace {

// Where the list of parameters begins: the first parenthesis outside template arguments that does
// not belong to "(anonymous namespace)" or to the name of an operator.
std::size_t ParametersOf(std::string_view signature) {
  int depth = 0;
  for (std::size_t i = 0; i < signature.size(); ++i) {
    if (signature.substr(i).starts_with("(anonymous")) i = signature.find(')', i);
    if (i >= signature.size()) break;
    if (signature[i] == '<') ++depth;
    if (signature[i] == '>' && depth > 0) --depth;
    if (signature[i] == '(' && depth == 0) return i;
  }
  return signature.size();
}

// The last name in front of `end`, without template arguments; `end` moves in front of it.
std::string TakeLastName(std::string_view text, std::size_t& end) {
  while (end > 0 && text[end - 1] == '>') {
    int depth = 0;
    do {
      --end;
      if (text[end] == '>') ++depth;
      if (text[end] == '<') --depth;
    } while (end > 0 && depth > 0);
  }
  std::size_t start = end;
  while (start > 0 && text[start - 1] != ':' && text[start - 1] != ' ' && text[start - 1] != '*' &&
         text[start - 1] != '&')
    --start;
  const std::string name(text.substr(start, end - start));
  end = start;
  return name;
}

// "Class.Procedure", or the procedure alone where it belongs to no class.
std::string ProcedureOf(std::string_view signature) {
  std::size_t end = ParametersOf(signature);
  const std::string name = TakeLastName(signature, end);
  if (end < 2 || signature[end - 1] != ':') return name;
  end -= 2;
  const std::string owner = TakeLastName(signature, end);
  // Classes have capitals; namespaces, named or not, have none.
  const bool isClass = !owner.empty() && owner[0] >= 'A' && owner[0] <= 'Z';
  return isClass ? owner + "." + name : name;
}

std::string_view ModuleOf(std::string_view file) {
  file.remove_prefix(file.rfind('/') + 1);
  return file.substr(0, file.find('.'));
}

}  // namespace

std::string_view TakeItem(std::string_view& list) {
  int depth = 0;
  bool quoted = false;
  std::size_t end = 0;
  for (; end < list.size(); ++end) {
    const char c = list[end];
    if (c == '"' && (end == 0 || list[end - 1] != '\\')) quoted = !quoted;
    if (quoted) continue;
    if (c == '(' || c == '[' || c == '{') ++depth;
    if (c == ')' || c == ']' || c == '}') --depth;
    if (c == ',' && depth == 0) break;
  }
  const std::string_view item = list.substr(0, end);
  list.remove_prefix(end == list.size() ? end : end + 1);
  while (list.starts_with(' ')) list.remove_prefix(1);
  return item;
}

ErrorContext& Add(VendrelError& failure, const char* signature, const char* file, long line) {
  return failure.AddContext(ProcedureOf(signature), ModuleOf(file), line);
}

void Put(ErrorContext& context, Value value) {
  ErrorContext::Values& place = value.In == Value::Place::Parameter ? context.Parameters
                                : value.In == Value::Place::Local   ? context.Locals
                                                                    : context.Fields;
  place.emplace_back(value.Name, std::move(value.Taken));
}

}  // namespace vendrel::trace
