#pragma once
// Source as a complete HTML page: UTF-8, no script, dark and light as the reader's system asks.
// Everything that comes from source is escaped, and a policy in the head forbids the page to run or
// fetch anything. The text content of a listing is the source, but for NUL and the form of line
// ends.

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/Fwd.h"

namespace vendrel {

/// Writes one page as a stream: made with its title, then listings, then `Finish`.
class HtmlPage {
 public:
  /// A place in a listing that can be linked to: its 1-based line and its name.
  using Anchor = std::pair<std::int32_t, std::string>;

  /// A listing with its heading.
  struct Listing {
    /// Name of the element shown; it becomes the heading, and with `Anchors` the links above.
    std::string_view Name;
    /// What stands small behind the heading, e.g. a path.
    std::string_view Place;
    std::string_view Text;
    /// Number of its first line.
    std::int32_t FirstLine = 1;
    /// Places to link to, in ascending order of their lines.
    std::vector<Anchor> Anchors;
  };

  HtmlPage(std::ostream& out, std::string_view title);
  /// Links to the listings that follow, which must be these in this order.
  void AddIndex(const std::vector<std::string>& names);
  void Add(const Listing& listing);
  /// The end of the page; nothing can be added behind it.
  void Finish();

 private:
  void AddLinks(const Listing& listing);
  void AddCode(const Listing& listing);

  std::ostream& mOut;
  /// A number in the names of lines, so that those of two listings differ.
  int mListings = 0;
};

/// A whole module as a listing with an anchor for each procedure, one for a property; its text lies
/// in the module.
HtmlPage::Listing ListingOf(const Component& component, std::string_view place);

/// The lines of a procedure, up to its end line; `text` keeps them.
HtmlPage::Listing ListingOf(const Block& block, std::string_view place, std::string& text);

}  // namespace vendrel
