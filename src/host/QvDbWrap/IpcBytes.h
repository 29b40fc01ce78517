// Hands the bytes of a document to the XML parser, and stops where they would keep it busy for ever.
#pragma once

#include "host/QvDbWrap/IpcProlog.h"

#include <QIODevice>

#include <cstdint>
#include <memory>
#include <string>

namespace QvDbWrap {

// The parser compares each attribute of an element with all that stand before it, so an element of a million
// attributes has to be refused before the parser has it as a whole. Between two tags of a design stand few
// attributes and hardly any text.
class IpcBytes : public QIODevice {
public:
    static constexpr std::int64_t maxBytes = std::int64_t(1) << 30;
    static constexpr std::int64_t maxEqualSigns = 20000; // with no '<' between them

    // A file; throws std::runtime_error with the reason when it can't be opened, is no file of a known size
    // or is too large.
    explicit IpcBytes(const std::string &file);
    explicit IpcBytes(const QByteArray &document);

    // Why the bytes end before the source does; empty when they don't.
    const std::string &refusal() const { return refusal_; }

protected:
    qint64 readData(char *data, qint64 size) override;
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    bool isAccepted(const char *data, qint64 size);
    void watchProlog(const char *data, qint64 size);

    std::unique_ptr<QIODevice> source_;
    std::int64_t numRead_ = 0;
    std::int64_t numEqualSigns_ = 0; // since the last '<'
    int wideLow_ = -1;               // place of a character's low byte in UTF-16; -1 for one byte a character
    char firstOfPair_ = 0;           // of a character in UTF-16
    IpcProlog prolog_;
    std::string refusal_;
};

} // namespace QvDbWrap
