#include "text/RegExp.h"

#include <re2/re2.h>

#include <memory>
#include <string>
#include <unordered_map>

#include "core/Workspace.h"
#include "diagnostics/Context.h"

namespace vendrel {
namespace {

// More patterns than the system has; a host that invents patterns starts the store anew.
constexpr std::size_t kMaxPatterns = 64;

using PatternStore = std::unordered_map<std::string, std::unique_ptr<re2::RE2>>;

const re2::RE2& Compiled(std::string_view pattern) {
  PatternStore& store = InUse<PatternStore>();
  const std::string key(pattern);
  const auto found = store.find(key);
  if (found != store.end()) return *found->second;
  re2::RE2::Options options;
  options.set_case_sensitive(false);
  options.set_log_errors(false);
  auto expression = std::make_unique<re2::RE2>(key, options);
  if (!expression->ok()) throw VendrelError(errRegExpSyntax, expression->error());
  if (store.size() >= kMaxPatterns) store.clear();
  return *(store[key] = std::move(expression));
}

}  // namespace

bool MatchRegExp(std::string_view Text, std::string_view Pattern) try {
  return re2::RE2::PartialMatch(re2::StringPiece(Text.data(), Text.size()), Compiled(Pattern));
}
VENDREL_CONTEXT(Text, Pattern)

}  // namespace vendrel
