// Telling an IDX document from other files by its first element.
#include "readers/IDXReader.h"

#include "host/FileSystem/NativePath.h"

#include <QXmlStreamReader>

#include <cstdio>
#include <memory>

namespace EDA {

namespace {

// The first element stands behind no more than a declaration and a few comments.
constexpr std::size_t headSize = std::size_t{64} * 1024;

QByteArray readHead(const std::string &filename) {
    std::error_code error;
    const std::filesystem::path path = FileSystem::toNative(filename);
    if (!std::filesystem::is_regular_file(path, error)) return {};
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(FileSystem::openFile(path, "rb"),
                                                                std::fclose);
    if (!file) return {};
    QByteArray head(static_cast<int>(headSize), '\0');
    head.resize(static_cast<int>(std::fread(head.data(), 1, headSize, file.get())));
    return head;
}

} // namespace

bool IDXReader::isDocument(const std::string &path) {
    QXmlStreamReader reader(readHead(path));
    reader.setNamespaceProcessing(false); // a prefix needs no namespace here, as in readFile
    if (!reader.readNextStartElement()) return false;
    return reader.qualifiedName().split(QLatin1Char(':')).last() == QLatin1String("EDMDDataSet");
}

} // namespace EDA
