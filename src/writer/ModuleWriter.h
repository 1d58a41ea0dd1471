#pragma once
// One module back into a file.

#include <string>
#include <string_view>

#include "model/Component.h"

namespace vendrel {

/// Writes a module to `target` and gives whether it did. One that is not fully loaded, whose target
/// is read-only, or that holds characters its code page lacks, is told and left out; raises what
/// the file raises.
bool WriteModule(Component& component, std::string_view target);

/// Tells that something is not written: always as a diagnostic, in a box unless `Silent`.
void ReportRefused(std::string_view text, std::string_view caption);
/// The same in a box that shows even when `Silent`: an output file that cannot be opened.
void ReportNotOpened(std::string_view leafName);

}  // namespace vendrel
