#pragma once
// Names of generic types with their arguments, and of what they are made from.

#include <string>
#include <string_view>
#include <vector>

namespace vendrel {

/// The name with the number of arguments in the place of each list of them: "Goods{`0,X{`1}}.Find"
/// becomes "Goods`2.Find". A name without braces stays as it is.
std::string DefinitionOf(std::string_view name);

/// The types behind a name, "(System.String,X{A,B}[0:,0:])", each by itself; empty where the name
/// has none.
std::vector<std::string_view> ArgumentsOf(std::string_view name);

}  // namespace vendrel
