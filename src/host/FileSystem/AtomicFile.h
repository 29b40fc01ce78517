// An output file that appears whole or not at all.
#pragma once

#include <memory>
#include <ostream>
#include <string>

namespace FileSystem {

// Writes to a temporary file in the target's folder; commit brings the bytes to the disk and renames the
// file over the target. Until then the target is as it was. Without a commit, or after a failure, the
// temporary file is removed and nothing remains.
//
//     AtomicFile file(path);
//     file.stream() << text;
//     if (!file.commit()) report(file.error());
//
// The target's folder must exist. A target that exists must be a regular file that its permissions allow to
// write; the permissions are kept. Where the target is a link, the file that it leads to is replaced.
// Bytes are written as given: a line feed stays one byte. The stream's locale is the C locale.
class AtomicFile {
public:
    explicit AtomicFile(const std::string &path);
    ~AtomicFile();
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;

    // False when the file couldn't be made, and after commit and discard.
    bool isOpen() const;

    // While not open, or once a write has failed, the stream is bad and drops what it is given.
    std::ostream &stream();

    // True when the target now holds exactly what was written.
    bool commit();

    // Commits two files that belong together: either both targets hold what was written, or both stay as they
    // were. The file that failed has the error.
    static bool commitBoth(AtomicFile &first, AtomicFile &second);

    // Removes the temporary file; the target stays as it was.
    void discard();

    // "name: reason" of the first failure, or empty.
    const std::string &error() const { return error_; }

private:
    class Buffer;

    bool fail(const std::string &reason);

    std::string path_;
    std::string error_;
    std::unique_ptr<Buffer> buffer_; // null while not open
    std::unique_ptr<std::ostream> stream_;
};

} // namespace FileSystem
