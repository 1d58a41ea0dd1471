// Any text coloured: as the documented form and as a page, which runs nothing.

#include <cstdlib>
#include <sstream>

#include "Support.h"
#include "core/Utf8.h"
#include "core/Workspace.h"
#include "output/CodeHtml.h"
#include "output/HtmlPage.h"

using namespace vendrel;

namespace {

std::size_t Count(std::string_view text, char c) {
  std::size_t count = 0;
  for (const char each : text) count += each == c;
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::Text(data, size);
  if (!IsValidUtf8(input)) return 0;  // texts in memory always are
  State().Reset();
  const std::string html = CodeToHTML(input);
  if (Count(html, '<') != Count(html, '>')) std::abort();  // only our own tags have either
  std::ostringstream page;
  HtmlPage whole(page, "t");
  whole.Add({"n", "p", input, 1, {}});
  whole.Finish();
  if (page.str().find("<script") != std::string::npos) std::abort();
  return 0;
}
