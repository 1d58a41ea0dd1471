#pragma once
// Which code page the files of a project were written with.

#include "services/FileSystemObject.h"
#include "services/TellingBytes.h"

namespace vendrel {

/// Guesses the page of a project file, a group or a single module from what is on the disk alone,
/// by whichever of these tells first: the page under which the files that it lists with letters
/// beyond ASCII exist; the bytes of the file and of all its modules together; where those are few,
/// the project files beside it and the sources in the folders of its modules, as far as its own
/// bytes fit. Raises nothing: a file that cannot be read tells nothing.
CodePageGuess GuessCodePage(const FileSystemObject& file);

}  // namespace vendrel
