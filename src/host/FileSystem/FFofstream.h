// An output stream on a file whose name is UTF-8.
#pragma once

#include "host/FileSystem/AtomicFile.h"

#include <ostream>
#include <string>

namespace FileSystem {

// A std::ostream in the C locale with the standard formatting, in which a line feed stays one byte.
//
// The target is replaced whole when the stream is closed, by close or by the destructor, and only if all was
// written; so nobody ever meets a half-written file. When the destructor runs because of an exception, the
// target stays as it was. A stream that couldn't be opened has failbit set and drops what it is given.
class FFofstream : public std::ostream {
public:
    explicit FFofstream(const std::string &path);
    ~FFofstream() override;

    bool isOpen() const { return file_.isOpen(); }

    // True when the target now holds all that was written; else failbit is set and error tells why.
    bool close();

    // Closes two files that belong together: either both targets hold all that was written, or both stay as
    // they were. The stream that failed has the error; failbit is set on both.
    static bool closeBoth(FFofstream &first, FFofstream &second);

    // "name: reason", or empty.
    const std::string &error() const { return file_.error(); }

    // The standard stream, for code that wants one by name.
    std::ostream &getStream() { return *this; }

private:
    void end(bool written);

    AtomicFile file_;
    int exceptionsAtStart_;
};

} // namespace FileSystem
