#include "cli/Elements.h"

#include "cli/Options.h"
#include "cli/ShownText.h"
#include "diagnostics/VendrelError.h"
#include "dotnet/Sources.h"
#include "model/Component.h"
#include "output/Places.h"

namespace vendrel::cli {

std::string SignatureOf(const CodeElement& element) { return ShownSource(SignatureText(element)); }

std::string FileOf(const Component& component) { return SourcePlace{&component}.File(); }

NamePattern WantedName(const std::string& name) try {
  return NamePattern(name);
} catch (const VendrelError& error) {
  // Without the standard text in front of what is wrong.
  throw ToolError(exUsage, error.Text().substr(ErrorText(error.Number()).size() + 2));
}

std::string FileOf(const SourcePlace& place) {
  const VBProject* project = place.Component ? place.Component->VBProject() : nullptr;
  return project && project->ProjectFiles.Count() > 0
             ? SourceFileOf(*place.Component, *place.Declared).FullPath()
             : place.File();
}

std::string PlaceOf(const CodeElement& element, ShownPaths& paths) {
  const SourcePlace place = vendrel::PlaceOf(element);
  const std::string file = FileOf(place);
  return file.empty() ? file : paths.Place(file, place.Line);
}

}  // namespace vendrel::cli
