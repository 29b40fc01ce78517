// What the process knows of its terminal.
#pragma once

namespace Tools {

struct Terminal {
    // True when standard error goes to a terminal, so that a progress bar makes sense there.
    static bool isErrorOutput();

    // True when standard input and output are a terminal, so that somebody can be asked.
    static bool canAsk();
};

} // namespace Tools
