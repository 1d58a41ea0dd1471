// A shared library of loaders that was built for another version of the interface.
#include <cstdint>

extern "C" std::int32_t VendrelModelCreateLoader(std::int32_t, const char*, void**) { return 99; }
