// Writing beside the target and renaming.
#include "host/FileSystem/AtomicFile.h"

#include "host/FileSystem/NativePath.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <locale>
#include <streambuf>
#include <utility>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace FileSystem {

namespace fs = std::filesystem;

namespace {

constexpr int nameTries = 1000;
constexpr fs::perms anyWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

bool syncToDisk(std::FILE *file) {
#ifdef _WIN32
    return _commit(_fileno(file)) == 0;
#else
    // Some file systems can't do it and say so; that is no reason to refuse the file.
    return fsync(fileno(file)) == 0 || errno == EINVAL;
#endif
}

// A name that doesn't depend on the target's, which may be as long as the system allows.
std::string temporaryName(int number) {
    const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
    return ".eda-" + std::to_string(ticks) + "-" + std::to_string(number) + ".tmp";
}

// Makes a new file in the folder; null on failure, with the reason in lastError.
std::FILE *makeTemporary(const fs::path &folder, fs::path &name) {
    for (int number = 0; number < nameTries; ++number) {
        name = folder / temporaryName(number);
        std::FILE *file = openFile(name, "wbx");
        if (file != nullptr || errno != EEXIST) return file;
    }
    return nullptr;
}

// Follows a link to the file that it leads to.
fs::path resolved(const fs::path &path) {
    std::error_code error;
    if (!fs::is_symlink(fs::symlink_status(path, error))) return path;
    fs::path target = fs::canonical(path, error);
    return error ? path : target;
}

// Why the target may not be replaced; empty when it may.
std::string notReplaceable(const fs::path &target) {
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (!fs::exists(status)) return {};
    if (fs::is_directory(status)) return "is a folder";
    if (!fs::is_regular_file(status)) return "is not a regular file";
    if ((status.permissions() & anyWrite) == fs::perms::none) return "is read-only";
    return {};
}

} // namespace

// Collects what is written into blocks and notes the first failure.
class AtomicFile::Buffer : public std::streambuf {
public:
    explicit Buffer(const fs::path &target) : target_(resolved(target)) {
        reason_ = notReplaceable(target_);
        if (!reason_.empty()) return;
        file_ = makeTemporary(target_.parent_path(), temporary_);
        if (file_ == nullptr) {
            reason_ = lastError().message();
            temporary_.clear();
        }
        setp(block_.data(), block_.data() + block_.size());
    }

    ~Buffer() override {
        close();
        std::error_code error;
        for (const fs::path &name : {temporary_, old_})
            if (!name.empty()) fs::remove(name, error);
    }

    Buffer(const Buffer &) = delete;
    Buffer &operator=(const Buffer &) = delete;

    bool isGood() const { return reason_.empty(); }
    const std::string &reason() const { return reason_; }

    // Brings the bytes to the disk; all that is left to do then is the renaming.
    bool prepare() {
        if (!flushBlock()) return false;
        if (std::fflush(file_) != 0 || !syncToDisk(file_)) return failed(lastError());
        return close() || failed(lastError());
    }

    bool replace() {
        std::error_code error;
        const fs::file_status old = fs::status(target_, error);
        if (fs::exists(old)) fs::permissions(temporary_, old.permissions(), error);
        fs::rename(temporary_, target_, error);
        if (error) return failed(error);
        temporary_.clear();
        return true;
    }

    // Makes a second name, or a copy where the file system has no second names, for what the target holds.
    bool keepOld() {
        std::error_code error;
        hadTarget_ = fs::exists(target_, error);
        if (!hadTarget_) return true;
        for (int number = 0; number < nameTries; ++number) {
            const fs::path name = target_.parent_path() / temporaryName(number);
            fs::create_hard_link(target_, name, error);
            if (error) fs::copy_file(target_, name, error);
            if (!error) old_ = name;
            if (error != std::errc::file_exists) break;
        }
        if (!error) return true;
        return failed(error);
    }

    // After replace: puts back what keepOld found.
    void bringOldBack() {
        std::error_code error;
        if (hadTarget_)
            fs::rename(old_, target_, error);
        else
            fs::remove(target_, error);
    }

protected:
    int_type overflow(int_type c) override {
        if (!flushBlock()) return traits_type::eof();
        if (!traits_type::eq_int_type(c, traits_type::eof())) sputc(traits_type::to_char_type(c));
        return traits_type::not_eof(c);
    }

    std::streamsize xsputn(const char *text, std::streamsize size) override {
        if (size >= epptr() - pptr()) {
            if (!flushBlock() || !write(text, static_cast<std::size_t>(size))) return 0;
            return size;
        }
        std::memcpy(pptr(), text, static_cast<std::size_t>(size));
        pbump(static_cast<int>(size));
        return size;
    }

    int sync() override { return flushBlock() ? 0 : -1; }

private:
    bool failed(const std::error_code &reason) {
        if (reason_.empty()) reason_ = reason.message();
        return false;
    }

    bool write(const char *text, std::size_t size) {
        if (!isGood() || file_ == nullptr) return false;
        if (std::fwrite(text, 1, size, file_) != size) return failed(lastError());
        return true;
    }

    bool flushBlock() {
        const bool written = write(pbase(), static_cast<std::size_t>(pptr() - pbase()));
        setp(block_.data(), block_.data() + block_.size());
        return written;
    }

    bool close() {
        std::FILE *file = std::exchange(file_, nullptr);
        return file == nullptr || std::fclose(file) == 0;
    }

    fs::path target_;
    fs::path temporary_; // empty when there is none to remove
    fs::path old_;       // a second name of what the target held; empty when there is none to remove
    bool hadTarget_ = false;
    std::FILE *file_ = nullptr;
    std::string reason_;
    std::array<char, std::size_t{1} << 16> block_;
};

AtomicFile::AtomicFile(const std::string &path)
    : path_(path), buffer_(std::make_unique<Buffer>(toNative(path))),
      stream_(std::make_unique<std::ostream>(buffer_.get())) {
    stream_->imbue(std::locale::classic());
    if (!buffer_->isGood()) fail(buffer_->reason());
}

AtomicFile::~AtomicFile() = default;

bool AtomicFile::isOpen() const { return buffer_ != nullptr; }

std::ostream &AtomicFile::stream() { return *stream_; }

bool AtomicFile::commit() {
    if (!buffer_) return false;
    if (!buffer_->prepare() || !buffer_->replace()) return fail(buffer_->reason());
    discard();
    return true;
}

bool AtomicFile::commitBoth(AtomicFile &first, AtomicFile &second) {
    AtomicFile *failed = nullptr;
    for (AtomicFile *file : {&first, &second}) {
        if (failed == nullptr && (!file->buffer_ || !file->buffer_->prepare())) failed = file;
    }
    if (failed == nullptr && !(first.buffer_->keepOld() && first.buffer_->replace())) failed = &first;
    if (failed == nullptr && !second.buffer_->replace()) {
        first.buffer_->bringOldBack();
        failed = &second;
    }
    if (failed != nullptr && failed->buffer_) failed->fail(failed->buffer_->reason());
    first.discard();
    second.discard();
    return failed == nullptr;
}

void AtomicFile::discard() {
    if (buffer_ && !buffer_->isGood() && error_.empty()) error_ = fileError(path_, buffer_->reason());
    stream_->rdbuf(nullptr);
    buffer_.reset();
}

bool AtomicFile::fail(const std::string &reason) {
    if (error_.empty()) error_ = fileError(path_, reason);
    discard();
    return false;
}

} // namespace FileSystem
