#pragma once
// Text on its way into a page: nothing that a source holds becomes mark-up, ends an attribute or
// leaves what XML and HTML allow.

#include <string>
#include <string_view>

namespace vendrel::site {

/// Appends text as the content of an element. Characters that no page may hold are shown as
/// symbols (U+0001 as U+2401); those that turn the direction are marked with their names and turn
/// nothing behind them.
void AppendText(std::string& html, std::string_view text);
/// The same.
std::string Text(std::string_view text);
/// For attribute values and titles, which hold no elements: what turns the direction is named.
void AppendPlain(std::string& html, std::string_view text);
std::string Plain(std::string_view text);

/// A name, isolated so that its direction is its own.
std::string Name(std::string_view name);

/// A link; `href` is an address that the site made itself, or one that `SafeAddress` gave.
std::string Link(std::string_view href, std::string_view text, std::string_view className = {});

/// An address outside, ready for an attribute; empty unless it is http, https or mailto.
std::string SafeAddress(std::string_view address);

/// The first `most` bytes of a text, cut between characters, with "…" behind where more follows.
std::string Shortened(std::string_view text, std::size_t most);

/// "1 module", "2 modules", "1,204 properties".
std::string Count(std::size_t count, std::string_view singular);
/// "455,120".
std::string Number(std::size_t number);

}  // namespace vendrel::site
