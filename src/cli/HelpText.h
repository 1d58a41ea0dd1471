#pragma once
// The help of the tool and of each command, as a terminal shows it.

#include <CLI/CLI.hpp>
#include <string>

namespace vendrel::cli {

/// Takes the place of the parser's own layout, for the tool and all of its commands.
class HelpText final : public CLI::FormatterBase {
 public:
  std::string make_help(const CLI::App* app, std::string name,
                        CLI::AppFormatMode mode) const override;
};

}  // namespace vendrel::cli
