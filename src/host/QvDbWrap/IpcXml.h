// Walks an XML document forward, element by element, within limits.
#pragma once

#include "host/QvDbWrap/IpcBytes.h"

#include <QXmlStreamReader>

#include <cstdint>
#include <string>

namespace QvDbWrap {

// Names of elements are compared without their namespace prefix; attributes are those without a prefix, as
// the others belong to other vocabularies. Name and attributes are those of the element that was opened last:
// read them before walking into its children, and walk into them once. Every operation throws
// std::runtime_error with "line N, column M: reason" when the document breaks off, is no XML, is deeper than
// maxDepth or has a document type declaration, and with it entities of its own.
class IpcXml {
public:
    static constexpr int maxDepth = 256;
    static constexpr int maxAttributes = 1000;  // of one element
    static constexpr std::size_t maxText = 256; // bytes of an attribute's text

    // Opens a file; throws std::runtime_error with the reason when it can't be read or is larger than 1 GiB.
    explicit IpcXml(const std::string &file);
    // Reads a document from memory, for tests and fuzzing.
    explicit IpcXml(const QByteArray &document);

    // Moves to the root element. To be called first, once.
    void openRoot();

    // Calls onChild() for each child of the element that is open, with the child open: name() and the
    // attributes are the child's. What onChild leaves unread of it is passed over.
    template <typename OnChild> void eachChild(OnChild onChild) {
        const int level = depth_;
        while (nextChild(level)) {
            onChild();
            skipTo(level);
        }
    }

    // The open element's name: compare with is() where speed counts.
    std::string name() const { return stream_.name().toString().toStdString(); }
    bool is(const char *name) const { return stream_.name() == QLatin1String(name); }

    bool has(const char *attribute) const;
    // The attribute's value as UTF-8, empty when missing. Names are copied into many records, so a longer one
    // than maxText bytes is shortened.
    std::string text(const char *attribute) const;
    // The texts that were.
    std::size_t numShortened() const { return numShortened_; }
    // A text as text() gives it: where it is too long its start, and behind that a number made from the
    // whole, so that texts which differ stay so. A text that was shortened stays as it is.
    static std::string shortened(std::string text);
    // The attribute as a number, blanks around it apart: the fallback when it is missing, no number, or not
    // finite.
    double number(const char *attribute, double fallback = 0) const;
    // True for "true" or "1", in any case.
    bool flag(const char *attribute, bool fallback = false) const;

    std::int64_t line() const { return stream_.lineNumber(); }

private:
    bool nextChild(int level);
    void skipTo(int level);
    QXmlStreamReader::TokenType next();
    QStringRef value(const char *attribute) const;
    [[noreturn]] void fail(const std::string &reason) const;

    void start();

    IpcBytes bytes_;
    QXmlStreamReader stream_;
    int depth_ = 0; // of the open element; 0 outside the root
    mutable std::size_t numShortened_ = 0;
};

} // namespace QvDbWrap
