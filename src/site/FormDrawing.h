#pragma once
// A form as a picture, from the places and sizes of its controls.

#include <string>

#include "model/Component.h"

namespace vendrel::site {

struct SiteRun;

/// Appends an SVG in which each control is a link to its row. Nothing where the reading has no
/// properties of controls, or none tells a size.
void AppendFormPicture(std::string& html, const SiteRun& run, const Component& form);

/// A caption as it is shown: "&" marks the letter behind it, "&&" is one.
std::string WithoutAccessKey(std::string_view caption);

}  // namespace vendrel::site
