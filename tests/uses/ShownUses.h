#pragma once
// Uses as text: a test names statements and looks at what their names mean.

#include <string>
#include <string_view>

#include "support/Projects.h"
#include "uses/UseBinder.h"

namespace vendrel::test {

/// "name kind answer", with the accessor, "(2)" for a further record, and what it means where that
/// is asked for.
inline std::string Shown(const NameUse& use, bool withMeaning) {
  std::string text(use.Text);
  text.append(" ").append(WordOf(use.Kind));
  if (use.Accessor != UseAccessor::None) text.append(" ").append(WordOf(use.Accessor));
  text.append(" ").append(WordOf(use.Answer));
  if (withMeaning && !MeaningOf(use).empty()) text.append(" ").append(MeaningOf(use));
  if (use.OwnProcedure) text.append(" own");
  if (use.Secondary) text.append(" (2)");
  return text;
}

/// The uses on the lines of a module from one line of the file on, "; " between them.
inline std::string UsesFrom(VBProject& project, const Component& module, std::int32_t line,
                            bool withMeaning = false, UseOptions options = {}) {
  std::string all;
  UseBinder binder(project, options);
  binder.Bind(module, [&](const NameUse& use) {
    if (use.Line < line) return;
    if (!all.empty()) all += "; ";
    all += Shown(use, withMeaning);
  });
  return all;
}

}  // namespace vendrel::test
