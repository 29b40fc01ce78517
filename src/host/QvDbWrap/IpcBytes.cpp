// Hands the bytes of a document to the XML parser.
#include "host/QvDbWrap/IpcBytes.h"

#include <QBuffer>
#include <QFile>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace QvDbWrap {

namespace {

std::unique_ptr<QIODevice> openFile(const std::string &name) {
    auto file = std::make_unique<QFile>(QString::fromUtf8(name.data(), static_cast<int>(name.size())));
    if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw std::runtime_error("it can't be read: " + file->errorString().toStdString());
    if (file->isSequential()) throw std::runtime_error("it can't be read: it is no file of a known size");
    return file;
}

std::unique_ptr<QIODevice> openDocument(const QByteArray &document) {
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(document);
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

// Where UTF-16 has the low byte of a character; -1 when the bytes don't start as UTF-16 does, with its mark
// or a '<'.
int findWideLow(const char *data, qint64 size) {
    if (size < 2) return -1;
    const std::string start(data, 2);
    if (start == "\xFF\xFE" || start == std::string("<\0", 2)) return 0;
    if (start == "\xFE\xFF" || start == std::string("\0<", 2)) return 1;
    return -1;
}

// `place` is the place of the first byte in the source.
bool hasWideOpening(const char *data, qint64 size, std::int64_t place, int low) {
    for (qint64 i = (place + low) % 2; i < size; i += 2) {
        const qint64 high = i + 1 - 2 * low;
        if (data[i] == '<' && high >= 0 && high < size && data[high] == '\0') return true;
    }
    return false;
}

} // namespace

IpcBytes::IpcBytes(const std::string &file) : source_(openFile(file)) {
    if (source_->size() > maxBytes) throw std::runtime_error("it can't be read: it is larger than 1 GiB");
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

IpcBytes::IpcBytes(const QByteArray &document) : source_(openDocument(document)) {
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 IpcBytes::readData(char *data, qint64 size) {
    if (!refusal_.empty()) return -1;
    const qint64 count = source_->read(data, size);
    if (count <= 0) return count;
    if (numRead_ == 0) wideLow_ = findWideLow(data, count);
    if (!isAccepted(data, count)) return -1;
    numRead_ += count;
    return count;
}

// A piece with a '<' in it counts as if that stood at its end: pieces are small beside the limit.
bool IpcBytes::isAccepted(const char *data, qint64 size) {
    const bool hasOpening = wideLow_ < 0 ? std::memchr(data, '<', static_cast<std::size_t>(size)) != nullptr
                                         : hasWideOpening(data, size, numRead_, wideLow_);
    numEqualSigns_ = hasOpening ? 0 : numEqualSigns_ + std::count(data, data + size, '=');
    if (numEqualSigns_ > maxEqualSigns) refusal_ = "an element with too many attributes";
    if (numRead_ + size > maxBytes) refusal_ = "more than 1 GiB";
    watchProlog(data, size);
    if (prolog_.hasDocumentType()) refusal_ = IpcProlog::documentTypeFound;
    return refusal_.empty();
}

void IpcBytes::watchProlog(const char *data, qint64 size) {
    for (qint64 i = 0; i < size && !prolog_.isOver(); ++i) {
        if (wideLow_ < 0) {
            prolog_.add(data[i]);
        } else if ((numRead_ + i) % 2 == 0) {
            firstOfPair_ = data[i];
        } else {
            const char low = wideLow_ == 0 ? firstOfPair_ : data[i];
            const char high = wideLow_ == 0 ? data[i] : firstOfPair_;
            prolog_.add(high == 0 ? low : IpcProlog::noMarkup);
        }
    }
}

} // namespace QvDbWrap
