// Reads a design file of any kind into a layout.
#pragma once

#include "host/QvDbWrap/Records.h"

#include <string>

namespace QvDbWrap {

class WrapperLog;

// How a design is read beside what is in it.
struct DesignRequest {
    std::string step;           // empty: the one that the design itself names
    bool useCourtyards = false; // a package's courtyard, where it has one, in place of its body
};

// The layout that is read in the place of a design that only the suite opens: the file of the same name with
// the extension .qvd.
std::string layoutBeside(const std::string &design);

// Known by its content are layouts in text form and IPC-2581 documents, whatever their names. For anything
// else the layout beside it is read, and the log tells so; but a .xml, .cvg or .qvd is what its name says or
// nothing. Throws std::runtime_error with a text for the user.
Layout readDesignFile(const std::string &design, const DesignRequest &request, WrapperLog &log);

} // namespace QvDbWrap
