#pragma once
// What a run has put in place, in words.

#include <cstddef>
#include <string>

#include "project/VBProject.h"

namespace vendrel::cli {

/// How many files the run has put in place so far: the mark that the functions below take.
std::size_t WrittenSoFar();

/// What a failure or a signal left behind it: "3 files had been written, and what they held before
/// lies in /p/SourceBackup". Backups do not count.
std::string DoneSince(std::size_t mark);

/// What became of a project: "2 modules and project file written, 1 file copied".
std::string WrittenOf(VBProject& project, std::size_t mark);

/// Whether a native path is that of a backup.
bool IsBackupPath(const std::string& path);

/// Where a module of a project is, or was, written; native.
std::string TargetOf(const VBProject& project, const Component& component);

}  // namespace vendrel::cli
