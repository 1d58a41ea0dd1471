// The site of the sample: every page and every link, and three pages held against those in the
// checkout. After a change that is meant:
//   VENDREL_UPDATE_GOLDEN=1 ./test
// writes them anew; read the difference before it is committed.

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "services/FileSource.h"
#include "site/CheckedSite.h"
#include "support/DiskFolder.h"
#include "support/Projects.h"
#include "support/SourceRoot.h"
#include "support/ToolRun.h"

namespace vendrel::cli {
namespace {

namespace fs = std::filesystem;

std::map<std::string, std::string> FilesBelow(const std::string& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file())
      files[fs::relative(entry.path(), folder).generic_string()] =
          ReadWholeFile(entry.path().string());
  return files;
}

std::string SampleGroup() { return test::SourceRoot() + "/samples/Ledger.vbg"; }

class SiteOfTheSample : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    sFolder = new test::DiskFolder;
    RunFor({"site", SampleGroup(), "--to", sFolder->Path("site"), "--quiet"});
  }
  static void TearDownTestSuite() {
    delete sFolder;
    sFolder = nullptr;
  }
  static test::DiskFolder* sFolder;
};
test::DiskFolder* SiteOfTheSample::sFolder = nullptr;

TEST_F(SiteOfTheSample, EveryPageIsWellFormedAndEveryLinkLeadsSomewhere) {
  const test::CheckedSite site(FilesBelow(sFolder->Path("site")));
  EXPECT_THAT(site.Faults(), testing::IsEmpty());
  EXPECT_GT(site.Pages(), 100u);
  EXPECT_GT(site.Links(), 4000u);
}

TEST_F(SiteOfTheSample, EveryPageIsValid) {
  if (std::system("tidy --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "tidy is not installed";
  const std::string told = sFolder->Path("told");
  // What this tidy does not know: "aria-current" and the links of SVG 2.
  const std::string command = "cd '" + sFolder->Path("site") +
                              "' && find . -name '*.html' -print0 | xargs -0 tidy -q -e 2>&1 | "
                              "grep -v 'aria-current\\|<a> proprietary attribute \"href\"' >" +
                              told;
  [[maybe_unused]] const int code = std::system(command.c_str());
  EXPECT_EQ(ReadWholeFile(told), "");
}

TEST_F(SiteOfTheSample, PagesAreThoseOfTheCheckout) {
  const auto files = FilesBelow(sFolder->Path("site"));
  std::string list;
  for (const auto& [path, content] : files) list.append(path).append("\n");
  std::map<std::string, std::string> kept{{"files.txt", list}};
  for (const char* page : {"Ledger/Account/Number.html", "Ledger/frmLedger/form.html",
                           "Ledger/source/modRates.bas.html"}) {
    const std::string path = page;
    kept[path.substr(path.rfind('/') + 1)] = files.at(path);
  }
  const char* update = std::getenv("VENDREL_UPDATE_GOLDEN");
  for (const auto& [name, actual] : kept) {
    const std::string path = test::SourceRoot() + "/tests/golden/site/" + name;
    if (update && *update) std::ofstream(path, std::ios::binary) << actual;
    EXPECT_EQ(test::FirstDifference(ReadWholeFile(path), actual), "") << path;
  }
}

TEST_F(SiteOfTheSample, IsTheSameFromAnotherPlaceAndWrittenOnce) {
  fs::copy(test::SourceRoot() + "/samples", sFolder->Path("else where"),
           fs::copy_options::recursive);
  const std::string other = sFolder->Path("other");
  const std::vector<std::string> run{"site", sFolder->Path("else where/Ledger.vbg"), "--to", other,
                                     "--quiet"};
  EXPECT_THAT(RunFor(run), HasSubstr(" written, 0 unchanged, 0 removed"));
  EXPECT_THAT(RunFor(run), HasSubstr(" 0 files written, "));
  EXPECT_TRUE(FilesBelow(other) == FilesBelow(sFolder->Path("site")));
}

TEST_F(SiteOfTheSample, TellsWhoUsesWhat) {
  const test::CheckedSite site(FilesBelow(sFolder->Path("site")));
  EXPECT_THAT(site["Ledger/Account/Post.html"], HasSubstr("id=\"used-by\">Used by"));
  EXPECT_THAT(site["Ledger/Account/Post.html"], HasSubstr(">Journal.Post</bdi>"));
  EXPECT_THAT(site["Ledger/source/modMain.bas.html"],
              HasSubstr("<a class=\"u\" href=\"../Journal/index.html\">Journal</a>"));
  EXPECT_THAT(site["Ledger/IPostable/PostTo.html"], HasSubstr("Implemented by"));
}

TEST_F(SiteOfTheSample, IsSearchedInABrowserWithoutAServer) {
  if (std::system("chromium --version >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "no browser is installed (Debian's package: chromium)";
  const std::string script = ReadWholeFile(test::SourceRoot() + "/assets/site.js");
  sFolder->Write("typing/site.js", script +
                                       "addEventListener('load', function () {\n"
                                       "  var box = document.querySelector('#search input');\n"
                                       "  box.value = 'account.post';\n"
                                       "  box.dispatchEvent(new Event('input'));\n});\n");
  const std::string to = sFolder->Path("searched");
  RunFor({"site", SampleGroup(), "--to", to, "--assets", sFolder->Path("typing"), "--quiet"});
  const std::string command =
      "cd '" + sFolder->Path() +
      "' && HOME=\"$PWD\" timeout 120 chromium --headless --no-sandbox --disable-gpu "
      "--virtual-time-budget=5000 --dump-dom 'file://" +
      to + "/Ledger/index.html' >dom.html 2>log";
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
  EXPECT_THAT(
      ReadWholeFile(sFolder->Path("dom.html")),
      testing::ContainsRegex("id=\"found-0\"[^>]*><a href=\"../Ledger/Account/Post.html\""));
}

TEST_F(SiteOfTheSample, GraphsAreDrawnWhereGraphvizIs) {
  const std::string to = sFolder->Path("drawn");
  const ToolRun run = Tool({"site", SampleGroup(), "--to", to, "--graphs", "--quiet"});
  if (std::system("dot -V >/dev/null 2>&1") != 0) {
    EXPECT_EQ(run.Code, exFailed);
    EXPECT_THAT(run.Err, HasSubstr("graphviz"));
    return;
  }
  EXPECT_EQ(run.Code, exDone) << run.Err;
  const test::CheckedSite site(FilesBelow(to));
  EXPECT_THAT(site["index.html"], HasSubstr("<figure class=\"graph\">"));
  EXPECT_THAT(site["Ledger/hierarchy.html"], HasSubstr("<figure class=\"graph\">"));
}

}  // namespace
}  // namespace vendrel::cli
