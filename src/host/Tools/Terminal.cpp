// What the process knows of its terminal.
#include "host/Tools/Terminal.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace Tools {

bool Terminal::isErrorOutput() {
    constexpr int standardError = 2;
#ifdef _WIN32
    return _isatty(standardError) != 0;
#else
    return isatty(standardError) != 0;
#endif
}

} // namespace Tools
