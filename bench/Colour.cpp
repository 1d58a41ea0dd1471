#include <sstream>

#include "bench/Generator.h"
#include "bench/Micro.h"
#include "bench/Registered.h"
#include "output/CodeHtml.h"
#include "output/HtmlPage.h"
#include "services/SourceText.h"
#include "services/Startup.h"

namespace vendrel::bench {
namespace {

std::string GeneratedCode(std::int64_t lines) {
  GeneratorOptions size;
  size.Lines = lines;
  std::string text;
  GenerateProject(size, [&](const GeneratedFile& file) {
    if (file.Name != kProjectFileName)
      text += SourceText::Decode(file.Text, FileOptions::Current().Page())->Text;
  });
  return text;
}

std::size_t PageSize(const std::string& code) {
  std::ostringstream out;
  HtmlPage page(out, "Generated");
  page.Add({"Generated", "", code, 1, {}});
  page.Finish();
  return out.str().size();
}

template <typename Colour>
void Measure(const std::string& name, int runs, const std::string& code, Colour colour) {
  Register(name, runs, [&code, colour](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(colour(code));
    CountItems(state, 1, static_cast<std::int64_t>(code.size()));
  });
}

}  // namespace

int RunColour(const MicroOptions& options) {
  EnsureStarted();
  // Two sizes, so that growth shows.
  const std::string small = GeneratedCode(10'000);
  const std::string large = GeneratedCode(100'000);
  for (const auto& [size, code] : {std::pair{"10k", &small}, std::pair{"100k", &large}}) {
    const std::string lines = std::string("/lines:") + size;
    Measure("html" + lines, options.Runs, *code,
            [](const std::string& text) { return CodeToHTML(text).size(); });
    Measure("page" + lines, options.Runs, *code, PageSize);
  }
  return RunRegistered();
}

}  // namespace vendrel::bench
