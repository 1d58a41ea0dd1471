#pragma once
// Dates that the script language reads from texts.

#include <optional>
#include <string_view>

#include "core/Calendar.h"

namespace vendrel {

/// The date and time that a text names in a US order: "1/31/2000", "2000-01-31", "31 Jan 2000",
/// "January 31, 2000 4:05 PM", "16:05:00". A day above 12 in the place of the month changes places
/// with it; years of two digits lie between 1930 and 2029. Nothing if the text names none.
std::optional<double> DateFromText(std::string_view text);

}  // namespace vendrel
