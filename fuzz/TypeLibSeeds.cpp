// Writes first inputs of TypeLibFuzz into the folder named on the command line.

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "typelib/SampleImages.h"

using namespace vendrel::typelib::test;

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: TypeLibSeeds FOLDER\n", stderr);
    return 2;
  }
  PeBuilder narrow, wide;
  narrow.TypeLibraries = {{1, SmallLibrary().Build()}, {2, OldLibrary().Build()}};
  narrow.VersionBlock = PeBuilder::Version(1, 2, 3, 4);
  wide.IsWide = true;
  wide.TypeLibraries = {{1, OldLibrary().Build()}};
  const std::pair<const char*, Image> seeds[] = {{"small.tlb", SmallLibrary().Build()},
                                                 {"old.tlb", OldLibrary().Build()},
                                                 {"narrow.dll", narrow.Build()},
                                                 {"wide.dll", wide.Build()}};
  std::filesystem::create_directories(argv[1]);
  for (const auto& [name, image] : seeds) {
    std::ofstream file(std::filesystem::path(argv[1]) / name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(image.data()),
               static_cast<std::streamsize>(image.size()));
  }
  return 0;
}
