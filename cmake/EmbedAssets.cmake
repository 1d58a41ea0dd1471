# Writes a source that holds files as texts: the templates, style and script of sites.
#   FOLDER: the files; TO: the source
cmake_minimum_required(VERSION 3.25)
file(GLOB files RELATIVE "${FOLDER}" "${FOLDER}/*")
list(SORT files)
set(rows "")
foreach(name IN LISTS files)
  file(READ "${FOLDER}/${name}" text)

  string(APPEND rows "    {\"${name}\", R\"~~~(${text})~~~\"},\n")
endforeach()
file(WRITE "${TO}.new"
"#include \"site/EmbeddedAssets.h\"

namespace vendrel::site {

std::span<const EmbeddedAsset> EmbeddedAssets() {
  static constexpr EmbeddedAsset kAssets[] = {
${rows}  };
  return kAssets;
}

}  // namespace vendrel::site
")
file(COPY_FILE "${TO}.new" "${TO}" ONLY_IF_DIFFERENT)
