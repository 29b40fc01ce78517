// A standard stream over an atomic file.
#include "host/FileSystem/FFofstream.h"

#include <exception>
#include <locale>

namespace FileSystem {

FFofstream::FFofstream(const std::string &path)
    : std::ostream(nullptr), file_(path), exceptionsAtStart_(std::uncaught_exceptions()) {
    imbue(std::locale::classic());
    if (file_.isOpen())
        rdbuf(file_.stream().rdbuf());
    else
        setstate(std::ios::failbit);
}

FFofstream::~FFofstream() {
    if (std::uncaught_exceptions() == exceptionsAtStart_) close();
}

bool FFofstream::close() {
    if (!file_.isOpen()) return false;
    const bool written = good();
    if (written && file_.commit()) {
        rdbuf(nullptr);
        return true;
    }
    file_.discard();
    rdbuf(nullptr);
    setstate(std::ios::failbit);
    return false;
}

} // namespace FileSystem
