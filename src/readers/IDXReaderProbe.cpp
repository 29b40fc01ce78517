// Telling an IDX document from other files by its first element.
#include "readers/IDXReader.h"

#include "host/FileSystem/NativePath.h"
#include "readers/XmlDetail.h"

#include <QIODevice>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>

namespace EDA {

namespace {

// The first element stands behind no more than a declaration and some comments.
constexpr std::size_t headSize = std::size_t{16} * 1024 * 1024;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE *)>;

// The beginning of a file, read as far as it is asked for: most files are told by their first bytes.
class Head : public QIODevice {
public:
    Head(File file, std::size_t size) : file_(std::move(file)), left_(size) { open(QIODevice::ReadOnly); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 size) override {
        const std::size_t wanted = std::min(left_, static_cast<std::size_t>(size));
        const std::size_t read = std::fread(data, 1, wanted, file_.get());
        left_ -= read;
        return read > 0 ? static_cast<qint64>(read) : -1;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    File file_;
    std::size_t left_;
};

} // namespace

bool IDXReader::isDocument(const std::string &path) {
    std::error_code error;
    const std::filesystem::path native = FileSystem::toNative(path);
    if (!std::filesystem::is_regular_file(native, error)) return false;
    const std::size_t size = static_cast<std::size_t>(
        std::min<std::uintmax_t>(std::filesystem::file_size(native, error), headSize));
    File file(FileSystem::openFile(native, "rb"), std::fclose);
    if (!file || error) return false;
    Head head(std::move(file), size);
    return firstElement(head, size, XmlLimits()) == QLatin1String("EDMDDataSet");
}

} // namespace EDA
