#pragma once
#include <string>
#include <string_view>

#include "core/Enums.h"

namespace vendrel {

/// Project name from the first line that begins with "Name=", without its quotes; empty if there is
/// none or no file.
std::string GetProjectName(std::string_view FileName);
/// The same from the text of a project file.
std::string ProjectNameIn(std::string_view text);

/// Module name from the `Attribute VB_Name` line of a file, else from the head of its form; empty
/// if the file is missing or tells none.
std::string GetComponentName(std::string_view FileName);

/// Kind of a module file by its extension; `ftOther` for one that no module has.
FileTypeEnum FileTypeOfExtension(std::string_view extension);

/// Takes a line off the front of a text, without its end.
std::string_view TakeLineOf(std::string_view& rest);

}  // namespace vendrel
