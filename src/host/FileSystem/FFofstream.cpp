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
    const bool written = good() && file_.commit();
    end(written);
    return written;
}

bool FFofstream::closeBoth(FFofstream &first, FFofstream &second) {
    const bool written = first.good() && second.good() && AtomicFile::commitBoth(first.file_, second.file_);
    first.end(written);
    second.end(written);
    return written;
}

void FFofstream::end(bool written) {
    file_.discard();
    rdbuf(nullptr);
    if (!written) setstate(std::ios::failbit);
}

} // namespace FileSystem
