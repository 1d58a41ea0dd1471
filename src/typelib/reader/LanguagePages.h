#pragma once

namespace vendrel::typelib {

/// Number of the code page that Windows uses for a language; 1252 where the language tells nothing,
/// 0 for the neutral language (0).
int CodePageOfLanguage(unsigned lcid);

}  // namespace vendrel::typelib
