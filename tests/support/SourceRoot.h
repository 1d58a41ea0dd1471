#pragma once
// Where the checkout lies, for tests that read its files.

#include <string>

namespace vendrel::test {

/// The folder of the checkout, without a slash at its end.
const std::string& SourceRoot();

}  // namespace vendrel::test
